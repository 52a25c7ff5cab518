#pragma once

// The life of one run of the program as the File menu sees it: start-up (with an optional
// ORV project path on the command line), New, Load, Save, Save as and Quit, and the saved and
// modified marks on the tree's root. The system dialogs go through UserDialogs and the main
// window through ConfigurationHost, so that every flow runs without a window.
//
// Run-time errors of Load, Save and Save as propagate to the caller's command boundary;
// start-up and Quit report them through UserDialogs::ShowError and go on, since neither may
// leave the program half started or stop it from closing.

#include <string>
#include <vector>

namespace velmora {

struct Workspace;
struct FileFilter;
class UserDialogs;
class ConfigurationHost;
class SettingsStore;

class ConfigurationSession {
public:
    ConfigurationSession(Workspace& workspace, UserDialogs& dialogs, ConfigurationHost& host);

    // Runs once when the main window is created: records the application folder in the
    // settings store, sets the export extension, lists the EDS folder, starts a new network,
    // then opens or names the configuration of a project path on the command line (appending
    // its name to traceFile), clears the modified mark and rebuilds the tree.
    void StartUp(SettingsStore& settings, const std::string& commandLine,
                 const std::string& traceFile);

    void New();
    void Load();
    void Save();
    // Returns false when the user cancels the dialog (nothing changes then).
    bool SaveAs();
    // Asks to save unsaved changes (Yes runs Save); the program ends whatever happens.
    void Quit();

    // The change mark: NoteModified, the root shows " (modificato)", toolbar button 10 is
    // usable again. Every command that changes the network calls it, before the tree is
    // rebuilt.
    void MarkModified();
    // Modified = -1 without the mark: opening an editor from the tree.
    void NoteModified();
    // Whether Modified was set since the last start-up, load, save or save as (a load does
    // not clear Modified, so Quit still asks). While it holds, every root caption says
    // " (modificato)", also that of a configuration that has a file of its own.
    bool HasUnsavedChanges() const { return unsavedChanges_; }

    // Empties the network as NewNetwork does and tells the main window.
    void ResetNetwork();

    // The filters of the configuration file dialogs.
    static const std::vector<FileFilter>& ConfigurationFilters();

private:
    void ShowMark(const char* mark);
    // LoadConfiguration, then the tree redrawn; a load that fails changes nothing.
    void LoadAndShow(const std::string& directory, const std::string& name);

    Workspace& workspace_;
    UserDialogs& dialogs_;
    ConfigurationHost& host_;
    bool unsavedChanges_ = false;
};

// The "*.eds" files of folder (the extension in any case), sorted by name; empty when the
// folder cannot be read.
std::vector<std::string> ListEdsFiles(const std::string& folder);

} // namespace velmora
