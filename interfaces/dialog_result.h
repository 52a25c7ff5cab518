#pragma once

// What a dialog's confirming action (Save, OK) tells the window that opened it: whether the
// network changed, so that the main window marks the configuration modified and rebuilds the
// tree, and whether the dialog closes. A refused action changes nothing and leaves the dialog
// open for correction.

namespace velmora {

struct DialogResult {
    bool NetworkChanged = false;
    bool Closes = false;

    bool operator==(const DialogResult&) const = default;
};

} // namespace velmora
