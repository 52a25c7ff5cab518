#pragma once

// What the configuration commands (start-up, New, Load, Save, Save as, Quit) need from the
// main window: its tree, the enabled state of a few commands, and the export that follows a
// plain Save. The main window's presenter implements it; tests implement it with a fake.

#include <string>

namespace velmora {

class ConfigurationHost {
public:
    virtual ~ConfigurationHost() = default;

    // The network was emptied: the tree is cleared, the node commands, toolbar button 10 and
    // the File command that New and Load re-enable are disabled.
    virtual void NetworkEmptied() = 0;
    // Rebuilds the tree from the network.
    virtual void RebuildTree() = 0;
    virtual bool TreeHasItems() const = 0;
    // Replaces the root item's caption (the saved and modified marks).
    virtual void ShowRootCaption(const std::string& caption) = 0;
    // A change was marked: toolbar button 10 is usable again.
    virtual void ChangeMarked() = 0;
    // The File command that NewNetwork disabled is usable again.
    virtual void EnableFileCommand() = 0;
    // "Esporta a ORV", run after every plain Save of a named configuration.
    virtual void ExportToController() = 0;
};

} // namespace velmora
