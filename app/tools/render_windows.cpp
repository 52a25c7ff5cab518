// velmora-render: draws the main window offscreen into PNG files, empty and with a network
// of the application folder's example devices, for the README and for looking at the
// window without a display. Usage: velmora-render APP_DIR OUT_DIR

#include "commands/main_commands.h"
#include "eds/node_creation.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "model/network.h"
#include "model/transmission_mode.h"
#include "session/workspace.h"
#include "ui/alert_window.h"
#include "ui/dialog_launcher.h"
#include "ui/main_window.h"
#include "ui/network_tree_model.h"
#include "ui/qt_user_dialogs.h"
#include "ui/qt_viewers.h"

#include <iostream>

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QMessageBox>
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

    // The question on closing, with Qt's own Italian buttons.
    QMessageBox question(QMessageBox::Information, "Dati non salvati",
                         "Dati non salvati, salvare ?", QMessageBox::Yes | QMessageBox::No,
                         &window);
    question.show();
    ok = Save(question, out.filePath("question-unsaved.png")) && ok;
    return ok ? 0 : 1;
}
