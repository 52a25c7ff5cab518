#pragma once

// An AlertDialog that records every alert it is asked to show and answers the check box
// "Inserisci comunque il Cob-Id" from a script (unticked when the script is empty).

#include "interfaces/alert_dialog.h"

#include <deque>
#include <vector>

namespace velmora::test {

class ScriptedAlerts : public AlertDialog {
public:
    std::vector<AlertRequest> shown;
    std::deque<bool> insertAnyway;

    bool ShowAlert(const AlertRequest& request) override {
        shown.push_back(request);
        if (insertAnyway.empty()) {
            return false;
        }
        const bool ticked = insertAnyway.front();
        insertAnyway.pop_front();
        return ticked;
    }
};

} // namespace velmora::test
