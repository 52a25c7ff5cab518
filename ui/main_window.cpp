#include "main_window.h"

#include "commands/main_commands.h"
#include "dialog_launcher.h"
#include "interfaces/user_dialogs.h"
#include "model/network.h"
#include "network_tree_model.h"
#include "session/workspace.h"

#include <exception>

#include <QAction>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

// The icons live in this static library's resource, which must be registered by name.
static void RegisterIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace velmora {

namespace {

QString Q(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The toolbar's icons, by position.
constexpr std::array<const char*, 14> kButtonIcons = {"new",
                                                      "open",
                                                      "save",
                                                      "view",
                                                      "print",
                                                      "add-node",
                                                      "add-from-library",
                                                      "edit-node",
                                                      "remove-node",
                                                      "copy-node",
                                                      "paste-node",
                                                      "export",
                                                      "save-to-library",
                                                      "edit-library"};

QKeySequence ShortcutFor(Command command) {
    switch (command) {
    case Command::FileNew:
        return QKeySequence::New;
    case Command::FileLoad:
        return QKeySequence::Open;
    case Command::FileSave:
        return QKeySequence::Save;
    case Command::FileQuit:
        return QKeySequence(Qt::CTRL | Qt::Key_Q);
    case Command::Remove:
        return QKeySequence::Delete;
    default:
        return {};
    }
}

} // namespace

MainWindow::MainWindow(Workspace& workspace, MainCommands& commands, UserDialogs& dialogs,
                       DialogLauncher& launcher, QWidget* parent)
    : QMainWindow(parent), workspace_(workspace), commands_(commands), dialogs_(dialogs),
      launcher_(launcher) {
    RegisterIcons();
    setObjectName("mainWin");
    setWindowIcon(QIcon(":/icons/app-icon.svg"));
    BuildMenus();
    BuildToolbar();
    BuildCentralArea();
    auto* help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this,
            [this] { Guarded([this] { commands_.HelpKey(); }); });
    resize(1000, 680);
    Refresh();
}

MainWindow::~MainWindow() = default;

void MainWindow::BuildMenus() {
    for (std::string_view menuTitle : kMenus) {
        QMenu* menu = menuBar()->addMenu(Q(menuTitle));
        menu->setObjectName(Q(menuTitle).remove('&'));
        for (const MenuItem& item : kMenuItems) {
            if (item.Menu != menuTitle) {
                continue;
            }
            if (item.Runs == Command::FileQuit || item.Runs == Command::TestPdo ||
                item.Runs == Command::About) {
                // Quit, the checks and the about box stand apart from what precedes them.
                menu->addSeparator();
            }
            QAction* action = menu->addAction(Q(item.Caption));
            action->setObjectName(Q(item.Name));
            action->setShortcut(ShortcutFor(item.Runs));
            const Command command = item.Runs;
            connect(action, &QAction::triggered, this, [this, command] { RunCommand(command); });
            menuActions_[static_cast<std::size_t>(command)] = action;
        }
    }
}

void MainWindow::BuildToolbar() {
    QToolBar* toolbar = addToolBar(tr("Comandi"));
    toolbar->setObjectName("toolbar");
    toolbar->setMovable(false);
    for (const ToolbarButton& button : kToolbar) {
        const QString icon = QString(":/icons/%1.svg")
                                 .arg(kButtonIcons[static_cast<std::size_t>(button.Position - 1)]);
        QAction* action = toolbar->addAction(QIcon(icon), Q(button.ToolTip));
        action->setObjectName(QString("button%1").arg(button.Position));
        action->setToolTip(Q(button.ToolTip));
        action->setData(button.Key);
        const int position = button.Position;
        connect(action, &QAction::triggered, this, [this, position] { ClickButton(position); });
        buttonActions_[static_cast<std::size_t>(position)] = action;
        if (position == 5 || position == 7 || position == 12) {
            toolbar->addSeparator();
        }
    }
}

void MainWindow::BuildCentralArea() {
    model_ = new NetworkTreeModel(commands_.Tree(), workspace_.Net, this);
    tree_ = new QTreeView(this);
    tree_->setObjectName("treeView");
    tree_->setModel(model_);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setExpandsOnDoubleClick(false);
    tree_->setSelectionMode(QAbstractItemView::SingleSelection);
    tree_->installEventFilter(this);
    connect(tree_, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { ActivateItem(NetworkTreeModel::ItemOf(index)); });
    connect(tree_, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { OnExpanded(index, true); });
    connect(tree_, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { OnExpanded(index, false); });
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { OnCurrentChanged(current); });

    auto* panel = new QWidget(this);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* infoLabel = new QLabel(tr("&Informazioni"), panel);
    info_ = new QPlainTextEdit(panel);
    info_->setObjectName("info");
    info_->setReadOnly(true);
    infoLabel->setBuddy(info_);
    auto* countLabel = new QLabel(tr("&Numero nodi"), panel);
    nodeCount_ = new QLineEdit(panel);
    nodeCount_->setObjectName("nodeCount");
    nodeCount_->setReadOnly(true);
    countLabel->setBuddy(nodeCount_);
    layout->addWidget(infoLabel);
    layout->addWidget(info_, 1);
    layout->addWidget(countLabel);
    layout->addWidget(nodeCount_);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(tree_);
    splitter->addWidget(panel);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    setCentralWidget(splitter);

    status_ = new QLabel(this);
    status_->setObjectName("status");
    statusBar()->addWidget(status_, 1);
}

QAction* MainWindow::MenuAction(Command command) const {
    return menuActions_[static_cast<std::size_t>(command)];
}

QAction* MainWindow::ButtonAction(int position) const {
    return position >= 1 && position <= 14 ? buttonActions_[static_cast<std::size_t>(position)]
                                           : nullptr;
}

template <typename Action> void MainWindow::Guarded(Action&& action) {
    try {
        action();
    } catch (const std::exception& error) {
        dialogs_.ShowError(error.what());
    }
}

void MainWindow::RunCommand(Command command) {
    Guarded([&] { Handle(commands_.Execute(command)); });
    Refresh();
}

void MainWindow::ClickButton(int position) {
    Guarded([&] { Handle(commands_.ClickButton(position)); });
    Refresh();
}

void MainWindow::ActivateItem(int item) {
    Guarded([&] { Handle(commands_.ActivateItem(item)); });
    Refresh();
}

void MainWindow::Handle(const DialogRequest& request) {
    using Kind = DialogRequest::Kind;
    switch (request.Dialog) {
    case Kind::None:
        return;
    case Kind::Quit:
        quitting_ = true;
        close();
        return;
    case Kind::ChannelDialog:
        // The channel dialog stays open beside the window and keeps it disabled until it
        // closes.
        launcher_.Open(request, this);
        commands_.DialogClosed(request, false);
        return;
    default:
        break;
    }
    setEnabled(false);
    bool changed = false;
    try {
        changed = launcher_.Open(request, this);
    } catch (...) {
        setEnabled(true);
        throw;
    }
    if (!launcher_.HoldsWindow()) {
        setEnabled(true);
    }
    commands_.DialogClosed(request, changed);
}

void MainWindow::Refresh() {
    {
        const QSignalBlocker blockSelection(tree_->selectionModel());
        restoring_ = true;
        model_->Reset();
        const NetworkTree& tree = commands_.Tree();
        for (int i = 0; i < tree.Size(); ++i) {
            if (tree.Item(i).Expanded && tree.ChildCount(i) > 0) {
                tree_->setExpanded(model_->IndexOfItem(i), true);
            }
        }
        const QModelIndex selected = model_->IndexOfItem(commands_.SelectedItem());
        if (selected.isValid()) {
            tree_->selectionModel()->setCurrentIndex(selected,
                                                     QItemSelectionModel::ClearAndSelect);
        }
        restoring_ = false;
    }
    ShowSelection();
}

void MainWindow::ShowSelection() {
    ShowCommandState();
    info_->setPlainText(Q(commands_.InfoText()));
    nodeCount_->setText(Q(commands_.NodeCountText()));
}

void MainWindow::ShowCommandState() {
    for (const MenuItem& item : kMenuItems) {
        menuActions_[static_cast<std::size_t>(item.Runs)]->setEnabled(
            commands_.IsEnabled(item.Runs));
    }
    MenuAction(Command::Remove)->setText(Q(commands_.RemoveCaption()));
    for (int position = 1; position <= 14; ++position) {
        buttonActions_[static_cast<std::size_t>(position)]->setEnabled(
            commands_.IsButtonEnabled(position));
    }
    const Network& network = workspace_.Net;
    const QString name = network.FileName.empty() ? tr("senza nome") : Q(network.FileName);
    setWindowTitle("Velmora - " + name + (workspace_.Modified != 0 ? "*" : ""));
    status_->setText(network.Saved == 0 ? tr("Configurazione non ancora salvata")
                                        : tr("Configurazione: %1   Esportazione: %2")
                                              .arg(Q(network.Directory + network.FileName),
                                                   Q(network.ExportPath)));
}

void MainWindow::OnCurrentChanged(const QModelIndex& current) {
    if (restoring_) {
        return;
    }
    const int item = NetworkTreeModel::ItemOf(current);
    if (item < 0) {
        return;
    }
    Guarded([&] { commands_.SelectItem(item); });
    ShowSelection();
}

void MainWindow::OnExpanded(const QModelIndex& index, bool expanded) {
    if (restoring_) {
        return;
    }
    Guarded([&] { commands_.ExpandItem(NetworkTreeModel::ItemOf(index), expanded); });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tree_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            ActivateItem(NetworkTreeModel::ItemOf(tree_->currentIndex()));
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!quitting_) {
        // The window's close button runs File > Esci, which asks about unsaved changes once.
        quitting_ = true;
        Guarded([&] { commands_.Execute(Command::FileQuit); });
    }
    event->accept();
}

} // namespace velmora
