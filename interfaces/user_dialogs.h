#pragma once

// The system dialogs the core's command logic needs: message boxes and the open and save
// file dialogs. The GUI implements this with Qt; tests implement it with a scripted fake, so
// every command flow runs without a window.

#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct FileFilter {
    std::string Caption; // "tipo di file (*.nodi)"
    std::string Pattern; // "*.nodi"
};

class UserDialogs {
public:
    virtual ~UserDialogs() = default;

    // A message box with the information icon and an OK button.
    virtual void Inform(const std::string& title, const std::string& text) = 0;
    // A run-time error that stopped a command, shown in a message box; the program goes on.
    virtual void ShowError(const std::string& text) = 0;
    // A Yes/No message box with the information icon; true for Yes.
    virtual bool AskYesNo(const std::string& title, const std::string& text) = 0;
    // The system's open-file and save-file dialogs; nullopt when the user cancels, else the
    // full path chosen.
    virtual std::optional<std::string>
    ChooseFileToOpen(const std::string& title, const std::vector<FileFilter>& filters) = 0;
    virtual std::optional<std::string>
    ChooseFileToSave(const std::string& title, const std::vector<FileFilter>& filters) = 0;
};

} // namespace velmora
