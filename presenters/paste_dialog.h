#pragma once

// The logic of the paste dialog ("Incolla Nodo ..."), opened by "Incolla nodo" with the node
// that "Copia nodo" remembered: it asks for the number of the new node and pastes a copy of
// the remembered node there, with the default COB-IDs of its new slot (PasteNode).
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include "interfaces/dialog_result.h"

#include <string>
#include <string_view>

namespace velmora {

struct Workspace;
class AlertDialog;

namespace PasteTexts {
inline constexpr std::string_view Title = "Incolla Nodo ...";
// Two blanks at the end, kept as they are; the copied node's product name follows.
inline constexpr std::string_view PromptPrefix = "Impostare il numero nodo per il prodotto  ";
inline constexpr std::string_view AlertSource = "incollaWin";
} // namespace PasteTexts

class PasteDialog {
public:
    // alerts shows the refusals and the COB-ID conflict.
    PasteDialog(Workspace& workspace, AlertDialog& alerts);

    // Opens the dialog for the node remembered in copiedSlot, with an empty number field.
    // When copiedSlot holds no node (nothing was copied: any value outside 0..500, or the
    // node was removed since) the alert says so (source "mainWin") and the result is false.
    bool Open(int copiedSlot);

    std::string_view Title() const { return PasteTexts::Title; }
    const std::string& Prompt() const { return prompt_; }
    std::string& NumberText() { return numberText_; }
    const std::string& NumberText() const { return numberText_; }

    // OK. A number outside 1..501 or one whose slot holds a node is refused with an alert
    // (source "incollaWin") and the dialog stays open. Otherwise the copy is pasted into
    // slot number - 1 and counted; when one of its new default COB-IDs is already in use the
    // conflict alert (source "mainWin") is shown, the slot is cleared again and the dialog
    // closes without a new node. A run-time error leaves the network as it was.
    DialogResult Ok();

private:
    void Refuse(const std::string& line1, const std::string& line2);

    Workspace& workspace_;
    AlertDialog& alerts_;
    int copiedSlot_ = -1;
    std::string prompt_;
    std::string numberText_;
};

} // namespace velmora
