// velmora-render: draws the main window offscreen into PNG files, empty and with a network
// of the application folder's example devices, and every dialog over that network, for the
// README and for looking at the windows without a display. The dialogs are shown without
// their modal loop and drawn at once. Usage: velmora-render APP_DIR OUT_DIR

#include "commands/main_commands.h"
#include "eds/node_creation.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "library/product_library.h"
#include "model/network.h"
#include "model/transmission_mode.h"
#include "pdo/cob_id.h"
#include "presenters/add_node_dialog.h"
#include "presenters/export_settings_dialog.h"
#include "presenters/library_insert_dialog.h"
#include "presenters/library_manager.h"
#include "presenters/parameter_editor.h"
#include "presenters/paste_dialog.h"
#include "presenters/pdo_editor.h"
#include "presenters/save_to_library_dialog.h"
#include "presenters/timeout_dialog.h"
#include "session/export_commands.h"
#include "session/workspace.h"
#include "ui/add_node_window.h"
#include "ui/alert_window.h"
#include "ui/channel_window.h"
#include "ui/dialog_launcher.h"
#include "ui/export_settings_window.h"
#include "ui/library_insert_window.h"
#include "ui/library_manager_window.h"
#include "ui/main_window.h"
#include "ui/mapping_window.h"
#include "ui/network_tree_model.h"
#include "ui/parameter_window.h"
#include "ui/paste_window.h"
#include "ui/pdo_window.h"
#include "ui/qt_user_dialogs.h"
#include "ui/qt_viewers.h"
#include "ui/save_to_library_window.h"
#include "ui/timeout_window.h"

#include <iostream>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTranslator>
#include <QTreeView>

namespace {

struct NoSettings : velmora::SettingsStore {
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

struct NoDialogs : velmora::DialogLauncher {
    bool Open(const velmora::DialogRequest&, QWidget*) override { return false; }
};

bool Save(QWidget& widget, const QString& path) {
    widget.repaint();
    QApplication::processEvents();
    if (!widget.grab().save(path)) {
        std::cerr << "velmora-render: " << path.toStdString() << " non scritto\n";
        return false;
    }
    std::cout << path.toStdString() << '\n';
    return true;
}

// Shows a dialog without its modal loop, draws it and closes it.
bool SaveDialog(QDialog& dialog, const QString& path) {
    dialog.setModal(false);
    dialog.show();
    const bool saved = Save(dialog, path);
    dialog.hide();
    return saved;
}

// Every dialog of the window over the network shown, its PDO pictures on node slot's TX PDO 1.
bool SaveDialogs(velmora::Workspace& workspace, velmora::UserDialogs& dialogs,
                 velmora::AlertDialog& alerts, velmora::HelpViewer& help, int slot,
                 QWidget& window, const QDir& out) {
    using namespace velmora;
    bool ok = true;
    {
        AddNodeDialog presenter(workspace, alerts, dialogs);
        presenter.Open("");
        const std::vector<std::string>& products = presenter.Products();
        const std::string& edsName = workspace.Net.NodeAt(slot).EdsName;
        for (std::size_t i = 0; i < products.size(); ++i) {
            if (products[i] == edsName) {
                presenter.SelectProduct(static_cast<int>(i));
            }
        }
        presenter.NumberText() = "12";
        AddNodeWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-add-node.png")) && ok;
    }
    {
        PasteDialog presenter(workspace, alerts);
        if (presenter.Open(slot)) {
            PasteWindow dialog(presenter, dialogs, &window);
            ok = SaveDialog(dialog, out.filePath("dialog-paste.png")) && ok;
        }
    }
    {
        // TX PDO 1 made fast in the editor, as the user does, then drawn as it opens again.
        PdoEditor fast(workspace, alerts, dialogs, help, slot, 0);
        fast.ChooseMode(TransmissionMode::Fast);
        fast.Save();
        PdoEditor presenter(workspace, alerts, dialogs, help, slot, 0);
        PdoWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-pdo-editor.png")) && ok;
        if (MappingEditor* editor = presenter.ModifyMapping(1)) {
            MappingWindow mapping(*editor, dialogs, &dialog);
            ok = SaveDialog(mapping, out.filePath("dialog-mapping-editor.png")) && ok;
        }
    }
    {
        ParameterEditor presenter(workspace, alerts, dialogs);
        const Node& node = workspace.Net.NodeAt(slot);
        if (presenter.OpenParameterEditor(slot, node.ParameterCount,
                                          ParameterEditorTexts::NewMode)) {
            const std::vector<std::string>& items = presenter.ObjectItems();
            for (std::size_t i = 0; i < items.size(); ++i) {
                if (items[i].starts_with("[6060]")) {
                    presenter.PickObject(static_cast<int>(i));
                }
            }
            ParameterWindow dialog(presenter, dialogs, &window);
            ok = SaveDialog(dialog, out.filePath("dialog-parameter-editor.png")) && ok;
        }
    }
    {
        TimeoutDialog presenter(workspace.Net, "PARTIMEOUT@" + std::to_string(slot));
        TimeoutWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-timeout.png")) && ok;
    }
    {
        ExportSettingsDialog presenter(workspace);
        ExportSettingsWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-configurazione.png")) && ok;
    }
    {
        // The export's tall form, written into a scratch folder; then the short one of Test PDO.
        const QTemporaryDir scratch;
        const std::string exportPath = workspace.Net.ExportPath;
        workspace.Net.ExportPath = QDir(scratch.path()).filePath("rete.cop").toStdString();
        ExportToController(workspace, workspace.ChannelDialog);
        workspace.Net.ExportPath = exportPath;
        ChannelWindow dialog(workspace.ChannelDialog, workspace.Channels, dialogs, &window);
        dialog.Refresh();
        ok = SaveDialog(dialog, out.filePath("dialog-channels-export.png")) && ok;
        TestPdo(workspace, workspace.ChannelDialog);
        dialog.Refresh();
        ok = SaveDialog(dialog, out.filePath("dialog-channels-test.png")) && ok;
    }
    {
        // The COB-ID of the node's TX PDO 1 typed again for another PDO.
        const Pdo& pdo = workspace.Net.NodeAt(slot).PdoAt(0);
        const CobIdOwner owner{kTrue, workspace.Net.NodeAt(slot).EdsName,
                               static_cast<std::int16_t>(slot), pdo.Direction, "1"};
        AlertRequest request;
        request.Source = "pdowin";
        request.Line1 = CobIdConflictLine1(pdo.Settings.CobId);
        request.Line2 = CobIdConflictLine2(owner);
        request.DisablesEditor = true;
        request.ShowsInsertAnyway = true;
        request.Candidate = pdo.Settings.CobId;
        const std::unique_ptr<QDialog> dialog = CreateAlertDialog(request, &window);
        ok = SaveDialog(*dialog, out.filePath("dialog-alert.png")) && ok;
    }
    return ok;
}

// The three library dialogs over a scratch application folder: the example EDS files copied
// into it and a library of the network's nodes, so that the real folder stays as it is.
bool SaveLibraryDialogs(velmora::Workspace& workspace, velmora::NetworkTree& tree,
                        velmora::UserDialogs& dialogs, velmora::AlertDialog& alerts, int slot,
                        QWidget& window, const QDir& out) {
    using namespace velmora;
    const QTemporaryDir scratch;
    const QDir scratchDir(scratch.path());
    const QDir eds(QString::fromStdString(workspace.EdsDirectory()));
    scratchDir.mkpath("eds");
    for (const QString& file : eds.entryList(QDir::Files)) {
        QFile::copy(eds.filePath(file), scratchDir.filePath("eds/" + file));
    }
    const std::string appDirectory = workspace.AppDirectory;
    workspace.AppDirectory = scratch.path().toStdString();
    const ProductLibrary library(LibraryDirectory(workspace.AppDirectory));
    for (int s = 0; s <= kLastSlot; ++s) {
        const Node& node = workspace.Net.NodeAt(s);
        if (node.InUse != 0) {
            const char* category = node.EdsName == "Drive402" ? "Azionamenti" : "Periferiche";
            library.Save(category, node.EdsName, node, true);
        }
    }
    library.Save("Azionamenti", "Asse X", workspace.Net.NodeAt(slot), true);

    bool ok = true;
    {
        SaveToLibraryDialog presenter(workspace, dialogs);
        presenter.Open(slot);
        SaveToLibraryWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-library-save.png")) && ok;
    }
    {
        LibraryInsertDialog presenter(workspace, tree, alerts, dialogs);
        presenter.Open();
        presenter.Select(0, 0);
        presenter.NumberText() = "20";
        presenter.CopiesText() = "2";
        presenter.Add();
        LibraryInsertWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-library-insert.png")) && ok;
    }
    {
        LibraryManager presenter(workspace, dialogs);
        presenter.Refresh();
        LibraryManagerWindow dialog(presenter, dialogs, &window);
        ok = SaveDialog(dialog, out.filePath("dialog-library-manager.png")) && ok;
    }
    workspace.AppDirectory = appDirectory;
    return ok;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    if (argc != 3) {
        std::cerr << "uso: velmora-render APP_DIR OUT_DIR\n";
        return 1;
    }
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QTranslator qtTranslation;
    if (qtTranslation.load(QLocale(QLocale::Italian), "qtbase", "_",
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&qtTranslation);
    }
    const QDir out(QString::fromLocal8Bit(argv[2]));
    QDir().mkpath(out.path());

    velmora::Workspace workspace;
    workspace.AppDirectory = argv[1];
    velmora::QtUserDialogs dialogs;
    velmora::AlertWindow alerts;
    velmora::QtTextViewer viewer;
    velmora::QtHelpViewer help(workspace.AppDirectory);
    velmora::MainCommands commands(workspace, dialogs, alerts, viewer, help);
    NoSettings settings;
    commands.StartUp(settings, "", "");
    NoDialogs launcher;
    velmora::MainWindow window(workspace, commands, dialogs, launcher);
    window.resize(1100, 720);
    window.show();
    bool ok = Save(window, out.filePath("main-window-empty.png"));

    // One node per example device, the drive's first PDOs fast, as a user would set them.
    velmora::Network& network = workspace.Net;
    int slot = 0;
    for (const std::string& file : workspace.EdsFiles) {
        velmora::AddNodeFromEds(workspace.ForNodeImport(), file, slot);
        ++network.NodeCount;
        slot += slot == 0 ? 4 : 1;
    }
    if (network.NodeCount > 0) {
        velmora::Node& first = network.NodeAt(0);
        for (int p = 0; p < std::min<int>(2, first.TxPdoCount); ++p) {
            velmora::Pdo& pdo = first.PdoAt(p);
            pdo.Settings.Mode = std::string(velmora::TransmissionMode::Fast);
            pdo.Settings.CobId = pdo.DefaultCobId;
        }
    }
    commands.DialogClosed({velmora::DialogRequest::Kind::AddNode}, true);
    window.Refresh();
    QTreeView* tree = window.TreeView();
    const velmora::NetworkTree& items = commands.Tree();
    for (int i = 0; i < items.Size(); ++i) {
        if (items.Key(i) == "TX0@0") {
            tree->setCurrentIndex(window.TreeModel()->IndexOfItem(i));
        }
    }
    ok = Save(window, out.filePath("main-window-network.png")) && ok;
    // The dialogs on the drive when the folder has it, else on the first node.
    int dialogSlot = -1;
    for (int s = 0; s <= velmora::kLastSlot && network.NodeCount > 0; ++s) {
        const velmora::Node& node = network.NodeAt(s);
        if (node.InUse != 0 && (dialogSlot < 0 || node.EdsName == "Drive402")) {
            dialogSlot = s;
        }
    }
    if (dialogSlot >= 0) {
        ok = SaveDialogs(workspace, dialogs, alerts, help, dialogSlot, window, out) && ok;
        ok = SaveLibraryDialogs(workspace, commands.Tree(), dialogs, alerts, dialogSlot, window,
                                out) &&
             ok;
    }

    // The question on closing, with Qt's own Italian buttons.
    QMessageBox question(QMessageBox::Information, "Dati non salvati",
                         "Dati non salvati, salvare ?", QMessageBox::Yes | QMessageBox::No,
                         &window);
    question.show();
    ok = Save(question, out.filePath("question-unsaved.png")) && ok;
    return ok ? 0 : 1;
}
