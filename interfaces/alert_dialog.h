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

} // namespace velmora
