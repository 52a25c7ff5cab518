// velmora: the configurator's window. Reads the options, loads Qt's Italian translation,
// wires the window's adapters to the main window's logic and runs the start-up.

#include "commands/main_commands.h"
#include "platform/app_directory.h"
#include "platform/qt_settings_store.h"
#include "session/workspace.h"
#include "ui/alert_window.h"
#include "ui/main_window.h"
#include "ui/qt_user_dialogs.h"
#include "ui/qt_viewers.h"
#include "ui/window_dialogs.h"

#include <cstdio>

#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("velmora");
    QApplication::setApplicationDisplayName("Velmora");
    QApplication::setApplicationVersion(VELMORA_VERSION);
    QApplication::setOrganizationName("Velmora");
    QApplication::setWindowIcon(QIcon(":/icons/app-icon.svg"));

    // The interface is Italian whatever the system's language: Qt's own buttons and dialogs
    // too ("Sì", "Annulla", "Apri").
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QTranslator qtTranslation;
    if (qtTranslation.load(QLocale(QLocale::Italian), "qtbase", "_",
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&qtTranslation);
    }

    QCommandLineParser parser;
    parser.setApplicationDescription("Configuratore di reti CANopen");
    const QCommandLineOption helpOption(QStringList{"h", "help"}, "Mostra questo aiuto.");
    parser.addOption(helpOption);
    parser.addVersionOption();
    const QCommandLineOption appDirOption("app-dir", "Cartella dell'applicazione.", "DIR");
    parser.addOption(appDirOption);
    parser.addPositionalArgument("progetto", "Progetto ORV (.ovp) da aprire.", "[PROJECT.ovp]");
    if (!parser.parse(QApplication::arguments())) {
        std::fprintf(stderr, "velmora: %s\n", qPrintable(parser.errorText()));
        return 1;
    }
    if (parser.isSet(helpOption)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (parser.isSet("version")) {
        parser.showVersion();
    }

    velmora::Workspace workspace;
    workspace.AppDirectory = velmora::ResolveAppDirectory(parser.value(appDirOption), true);

    velmora::QtUserDialogs dialogs;
    velmora::AlertWindow alerts;
    velmora::QtTextViewer viewer;
    velmora::QtHelpViewer help(workspace.AppDirectory);
    velmora::MainCommands commands(workspace, dialogs, alerts, viewer, help);
    velmora::WindowDialogs windowDialogs(workspace, commands.Tree(), dialogs, alerts, help);
    velmora::QtSettingsStore settings;

    // The start-up reads the positional arguments as one command line, joined by blanks.
    commands.StartUp(settings, parser.positionalArguments().join(' ').toStdString(), "log.txt");

    velmora::MainWindow window(workspace, commands, dialogs, windowDialogs);
    dialogs.SetParent(&window);
    alerts.SetParent(&window);
    window.show();
    return app.exec();
}
