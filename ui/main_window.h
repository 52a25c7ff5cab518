#pragma once

// The main window: menus, toolbar, the network tree, the information panel, the node count
// and a status line. It shows what MainCommands says and forwards every user action to it;
// after each command it shows the state again (tree, expanded items, selection, enabled
// commands, captions). Menu items and toolbar buttons are separate actions with separate
// enabled states.

#include "commands/command_table.h"

#include <array>

#include <QMainWindow>

class QAction;
class QLineEdit;
class QPlainTextEdit;
class QTreeView;
class QLabel;

namespace velmora {

class MainCommands;
class DialogLauncher;
class NetworkTreeModel;
class UserDialogs;
struct DialogRequest;
struct Workspace;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(Workspace& workspace, MainCommands& commands, UserDialogs& dialogs,
               DialogLauncher& launcher, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Shows the logic's state again: model reset, expanded items, current item, commands.
    void Refresh();

    QAction* MenuAction(Command command) const;
    // Toolbar button at position 1..14.
    QAction* ButtonAction(int position) const;
    QTreeView* TreeView() const { return tree_; }
    NetworkTreeModel* TreeModel() const { return model_; }

    // The user actions, as the widgets forward them (public so tests can drive them).
    void RunCommand(Command command);
    void ClickButton(int position);
    void ActivateItem(int item);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildMenus();
    void BuildToolbar();
    void BuildCentralArea();
    void Handle(const DialogRequest& request);
    void ShowCommandState();
    void ShowSelection();
    void OnCurrentChanged(const QModelIndex& current);
    void OnExpanded(const QModelIndex& index, bool expanded);
    // Runs action and shows any failure that escaped it; the window goes on.
    template <typename Action> void Guarded(Action&& action);

    Workspace& workspace_;
    MainCommands& commands_;
    UserDialogs& dialogs_;
    DialogLauncher& launcher_;
    NetworkTreeModel* model_ = nullptr;
    QTreeView* tree_ = nullptr;
    QPlainTextEdit* info_ = nullptr;
    QLineEdit* nodeCount_ = nullptr;
    QLabel* status_ = nullptr;
    std::array<QAction*, kCommandCount> menuActions_{};
    std::array<QAction*, 15> buttonActions_{}; // by position, 1..14
    bool restoring_ = false; // the program, not the user, is expanding or selecting
    bool quitting_ = false;
};

} // namespace velmora
