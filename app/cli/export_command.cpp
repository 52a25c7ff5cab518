// velmora-cli export CONFIG.nodi [-o OUT]: the "Esporta a ORV" command without a window.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "export/channel_analysis.h"
#include "session/export_commands.h"
#include "session/workspace.h"

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

constexpr const char* kUsage =
    "Uso: velmora-cli export CONFIG.nodi [-o OUT]\n\n"
    "Carica CONFIG.nodi, esegue il controllo dei canali con il numero massimo di PDO fast\n"
    "e, se l'esportazione è permessa, scrive il file per ORV in OUT o nel percorso di\n"
    "esportazione della configurazione.\n\n"
    "Opzioni:\n"
    "  -o, --output OUT  file da scrivere\n"
    "  -h, --help        mostra questo aiuto\n\n"
    "Uscita: 0 file scritto, 1 errore, 3 esportazione rifiutata.\n";

} // namespace

int RunExport(const QStringList& args, Context& context) {
    QCommandLineParser parser;
    const QCommandLineOption outputOption(QStringList{"o", "output"}, "file", "OUT");
    parser.addOption(outputOption);
    if (const auto stop = ParseCommandArguments(parser, args, "export", kUsage, context, 1)) {
        return *stop;
    }

    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory,
                          parser.positionalArguments().first().toStdString());
    if (parser.isSet(outputOption)) {
        workspace.Net.ExportPath = parser.value(outputOption).toStdString();
    }
    ChannelDialogState dialog;
    const ExportOutcome outcome = ExportToController(workspace, dialog);
    switch (outcome.Status) {
    case ExportStatus::Written:
        context.out << dialog.Message << '\n';
        return kExitOk;
    case ExportStatus::Refused:
        context.Fail(dialog.Message);
        return kExitRefused;
    case ExportStatus::NotWritten:
        return context.Fail(outcome.Reason);
    case ExportStatus::NoFileName:
        break;
    }
    return context.Fail(std::string(ExportTexts::NoNameText));
}

} // namespace velmora::cli
