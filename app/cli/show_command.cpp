// velmora-cli show CONFIG.nodi: the network tree as text.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "session/workspace.h"
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
    if (const auto stop = ParseCommandArguments(parser, args, "show", kUsage, context, 1)) {
        return *stop;
    }

    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory,
                          parser.positionalArguments().first().toStdString());
    NetworkTree tree;
    tree.RebuildNetworkTree(workspace.Net, false); // just loaded: nothing unsaved
    for (int i = 0; i < tree.Size(); ++i) {
        context.out << std::string(2 * static_cast<std::size_t>(tree.Item(i).Depth), ' ')
                    << tree.Key(i) << '\t' << tree.Caption(i) << '\n';
    }
    return kExitOk;
}

} // namespace velmora::cli
