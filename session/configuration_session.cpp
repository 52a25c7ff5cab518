#include "session/configuration_session.h"

#include "interfaces/configuration_host.h"
#include "interfaces/settings_store.h"
#include "interfaces/user_dialogs.h"
#include "model/paths.h"
#include "model/project_path.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace velmora {

ConfigurationSession::ConfigurationSession(Workspace& workspace, UserDialogs& dialogs,
                                           ConfigurationHost& host)
    : workspace_(workspace), dialogs_(dialogs), host_(host) {}

const std::vector<FileFilter>& ConfigurationSession::ConfigurationFilters() {
    static const std::vector<FileFilter> filters = {{"tipo di file (*.nodi)", "*.nodi"},
                                                    {"All Files (*.*)", "*.*"}};
    return filters;
}

void ConfigurationSession::ResetNetwork() {
    NewNetwork(workspace_.Net, workspace_.AppDirectory);
    host_.NetworkEmptied();
}

void ConfigurationSession::StartUp(SettingsStore& settings, const std::string& commandLine,
                                   const std::string& traceFile) {
    settings.Write("Generali", "Path", workspace_.AppDirectory);
    SetExportExtension(workspace_.Net);
    workspace_.EdsFiles = ListEdsFiles(workspace_.EdsDirectory());
    ResetNetwork();

    if (!commandLine.empty()) {
        const std::string name = ProjectName(commandLine, traceFile) + ".nodi";
        const std::string directory = ProjectDirectory(commandLine);
        if (!directory.empty()) {
            try {
                if (!IsExistingFile(directory + name)) {
                    // Named and counted as saved, so that the first Save writes there
                    // without asking, although no file exists yet.
                    ResetNetwork();
                    SetConfigurationName(workspace_.Net, directory, name);
                    workspace_.Net.Saved = kTrue;
                } else {
                    LoadIntoWorkspace(workspace_, directory, name);
                }
            } catch (const RuntimeError& error) {
                dialogs_.ShowError(error.what());
            }
        }
        host_.EnableFileCommand();
    }
    workspace_.Modified = 0;
    unsavedChanges_ = false;
    host_.RebuildTree();
}

void ConfigurationSession::New() {
    ResetNetwork();
    host_.EnableFileCommand();
}

void ConfigurationSession::Load() {
    const auto chosen =
        dialogs_.ChooseFileToOpen("Carica configurazione ...", ConfigurationFilters());
    if (!chosen) {
        return;
    }
    std::string directory;
    std::string name;
    SplitPath(*chosen, directory, name);
    host_.EnableFileCommand();
    LoadAndShow(directory, name);
}

void ConfigurationSession::LoadAndShow(const std::string& directory, const std::string& name) {
    // A failed load leaves the network as it was: nothing to show again.
    LoadIntoWorkspace(workspace_, directory, name);
    unsavedChanges_ = false;
    host_.RebuildTree();
}

void ConfigurationSession::Save() {
    if (!host_.TreeHasItems()) {
        return;
    }
    if (workspace_.Net.Saved != 0) {
        SaveConfiguration(workspace_.Net, "", "");
        unsavedChanges_ = false;
        ShowMark(" (salvato)");
        // Every plain Save of a named configuration rewrites the export file too.
        host_.ExportToController();
    } else if (!SaveAs()) {
        return; // a cancelled dialog leaves everything as it was, the modified mark included
    }
    workspace_.Modified = 0;
}

bool ConfigurationSession::SaveAs() {
    const auto chosen =
        dialogs_.ChooseFileToSave("Salvaconfigurazione ...", ConfigurationFilters());
    if (!chosen) {
        return false;
    }
    std::string directory;
    std::string name;
    SplitPath(*chosen, directory, name);
    SaveConfiguration(workspace_.Net, directory, name);
    unsavedChanges_ = false;
    ShowMark(" (salvato)");
    // Read the file back, so that the network shown is the one on disk.
    LoadAndShow(directory, name);
    host_.EnableFileCommand();
    workspace_.Modified = 0;
    return true;
}

void ConfigurationSession::Quit() {
    if (workspace_.Modified != kTrue) {
        return;
    }
    if (!dialogs_.AskYesNo("Dati non salvati", "Dati non salvati, salvare ?")) {
        return;
    }
    try {
        Save();
    } catch (const RuntimeError& error) {
        dialogs_.ShowError(error.what()); // closing cannot be stopped
    }
}

void ConfigurationSession::MarkModified() {
    NoteModified();
    ShowMark(" (modificato)");
    host_.ChangeMarked();
}

void ConfigurationSession::NoteModified() {
    workspace_.Modified = kTrue;
    unsavedChanges_ = true;
}

void ConfigurationSession::ShowMark(const char* mark) {
    if (!host_.TreeHasItems()) {
        return;
    }
    const std::string& fileName = workspace_.Net.FileName;
    host_.ShowRootCaption(fileName.substr(0, fileName.find('.')) + mark);
}

std::vector<std::string> ListEdsFiles(const std::string& folder) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(ToFsPath(folder), error), end; !error && it != end;
         it.increment(error)) {
        std::error_code typeError;
        if (!it->is_regular_file(typeError)) {
            continue;
        }
        std::string name = FromFsPath(it->path().filename());
        if (name.size() >= 4 && LowerCase(name.substr(name.size() - 4)) == ".eds") {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace velmora
