#include "presenters/paste_dialog.h"

#include "interfaces/alert_dialog.h"
#include "model/network.h"
#include "pdo/node_paste.h"
#include "presenters/add_node_dialog.h"
#include "session/workspace.h"

namespace velmora {

PasteDialog::PasteDialog(Workspace& workspace, AlertDialog& alerts)
    : workspace_(workspace), alerts_(alerts) {}

bool PasteDialog::Open(int copiedSlot) {
    numberText_.clear();
    prompt_.clear();
    if (copiedSlot < 0 || copiedSlot > kLastSlot || workspace_.Net.NodeAt(copiedSlot).InUse == 0) {
        copiedSlot_ = -1;
        AlertRequest alert;
        alert.Source = "mainWin";
        alert.Line1 = "Nessun nodo da incollare:";
        alert.Line2 = "copiare prima un nodo con \"Copia nodo\"";
        alerts_.ShowAlert(alert);
        return false;
    }
    copiedSlot_ = copiedSlot;
    prompt_ = std::string(PasteTexts::PromptPrefix) + workspace_.Net.NodeAt(copiedSlot).EdsName;
    return true;
}

void PasteDialog::Refuse(const std::string& line1, const std::string& line2) {
    alerts_.ShowAlert(BlockingAlert(std::string(PasteTexts::AlertSource), line1, line2));
}

DialogResult PasteDialog::Ok() {
    Network& network = workspace_.Net;
    const std::optional<int> number = ParseNodeNumber(numberText_);
    if (!number) {
        Refuse(kBadNodeNumberLine1, kBadNodeNumberLine2);
        return {};
    }
    const int slot = *number - 1;
    const Node& target = network.NodeAt(slot);
    if (target.InUse != 0) {
        Refuse(OccupiedNodeLine(*number, target.EdsName), "");
        return {};
    }

    const Node source = network.NodeAt(copiedSlot_);
    const Node backup = target;
    const std::int16_t nodeCount = network.NodeCount;
    PasteResult pasted;
    try {
        pasted = PasteNode(network, source, slot);
    } catch (...) {
        network.NodeAt(slot) = backup;
        network.NodeCount = nodeCount;
        throw;
    }
    if (!pasted.Pasted) {
        alerts_.ShowAlert(*pasted.Alert);
        return {false, true};
    }
    return {true, true};
}

} // namespace velmora
