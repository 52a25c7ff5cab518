#pragma once

#include "pdo/alert.h"

namespace velmora {

// The one modal alert dialog (ShowAlert). It shows the two lines, and the check box
// "Inserisci comunque il Cob-Id" when the request offers it, and returns when the user closes
// it: true when the check box was ticked. The caller disables its own dialog before and
// enables it again after, as the request's Source says. The GUI implements it with a Qt
// dialog; tests answer from a script.
class AlertDialog {
public:
    virtual ~AlertDialog() = default;
    virtual bool ShowAlert(const AlertRequest& request) = 0;
};

// The alert guard: shows request with the source dialog disabled meanwhile when the request
// says so (disabled is true while the alert is up) and enabled again when the alert closes,
// also when ShowAlert throws. Returns whether "Inserisci comunque il Cob-Id" was ticked.
inline bool ShowAlertDisabling(AlertDialog& alerts, const AlertRequest& request, bool& disabled) {
    disabled = request.DisablesEditor;
    try {
        const bool ticked = alerts.ShowAlert(request);
        disabled = false;
        return ticked;
    } catch (...) {
        disabled = false;
        throw;
    }
}

} // namespace velmora
