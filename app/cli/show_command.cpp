// velmora-cli show CONFIG.nodi: the network tree as text.

#include "cli/cli.h"
#include "cli/load_configuration.h"
#include "model/workspace.h"
#include "tree/network_tree.h"

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

constexpr const char* kUsage =
    "Uso: velmora-cli show CONFIG.nodi\n\n"
    "Carica CONFIG.nodi e stampa l'albero della rete, un elemento per riga: due spazi per\n"
    "livello, la chiave, una tabulazione e il testo dell'elemento.\n\n"
    "Opzioni:\n"
    "  -h, --help mostra questo aiuto\n";

} // namespace

int RunShow(const QStringList& args, Context& context) {
    QCommandLineParser parser;
    const QCommandLineOption helpOption(QStringList{"h", "help"}, "aiuto");
    parser.addOption(helpOption);
    if (!parser.parse(QStringList{"show"} + args)) {
        return context.Fail(parser.errorText().toStdString());
    }
    if (parser.isSet(helpOption)) {
        context.out << kUsage;
        return kExitOk;
    }
    if (parser.positionalArguments().size() != 1) {
        context.err << kUsage;
        return kExitFailure;
    }

    Workspace workspace;
    LoadConfigurationFile(parser.positionalArguments().first().toStdString(), workspace, context);
    NetworkTree tree;
    tree.RebuildNetworkTree(workspace.Net);
    for (int i = 0; i < tree.Size(); ++i) {
        context.out << std::string(2 * static_cast<std::size_t>(tree.Item(i).Depth), ' ')
                    << tree.Key(i) << '\t' << tree.Caption(i) << '\n';
    }
    return kExitOk;
}

} // namespace velmora::cli
