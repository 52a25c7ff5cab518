#pragma once

// What the modal alert dialog (ShowAlert) is asked to show. The rules that raise alerts
// return one of these; the dialog itself is an interface of the application layer.

#include <string>
#include <utility>

namespace velmora {

struct AlertRequest {
    // The dialog to enable again when the alert closes: "pdowin", "mainWin", "MainWin",
    // "incollaWin", "mapping", "parametri", "addWin".
    std::string Source;
    std::string Line1;
    std::string Line2;
    // "default": put the last accepted COB-ID back on closing; empty: nothing more.
    std::string Action;
    // The editor dialog is disabled while the alert is up.
    bool DisablesEditor = false;
    // The check box "Inserisci comunque il Cob-Id" is visible, offering to store Candidate.
    bool ShowsInsertAnyway = false;
    std::string Candidate;

    bool operator==(const AlertRequest&) const = default;
};

// An alert with no action that disables the source dialog while it is up.
inline AlertRequest BlockingAlert(std::string source, std::string line1, std::string line2) {
    AlertRequest request;
    request.Source = std::move(source);
    request.Line1 = std::move(line1);
    request.Line2 = std::move(line2);
    request.DisablesEditor = true;
    return request;
}

} // namespace velmora
