#pragma once

// What the modal alert dialog (ShowAlert) is asked to show. The rules that raise alerts
// return one of these; the dialog itself belongs to the user interface.

#include <string>

namespace velmora {

struct AlertRequest {
    // The dialog to enable again when the alert closes: "pdowin", "mainWin", "incollaWin",
    // "mapping", "parametri".
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

} // namespace velmora
