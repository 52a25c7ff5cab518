// velmora-cli lib list|save|insert|remove: the product library without a window, through the
// same operations as the window's "&Libreria" commands.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "cli/json_writer.h"
#include "library/product_insertion.h"
#include "library/product_library.h"
#include "model/paths.h"
#include "presenters/add_node_dialog.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "tree/network_tree.h"

#include <memory>

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

constexpr const char* kUsage =
    "Uso: velmora-cli lib list [--json]\n"
    "     velmora-cli lib save CONFIG.nodi --node N --category CAT [--name NOME] [--replace]\n"
    "     velmora-cli lib insert CONFIG.nodi --category CAT --name NOME --node N [-o OUT.nodi]\n"
    "     velmora-cli lib remove --category CAT [--name NOME]\n\n"
    "La libreria dei prodotti: la cartella lib/ dell'applicazione, una cartella per\n"
    "categoria e un file NOME.libs per prodotto.\n\n"
    "  list    elenca categorie e prodotti in ordine di nome (--json: come JSON)\n"
    "  save    salva il nodo N di CONFIG come prodotto NOME (predefinito: il nome dell'EDS\n"
    "          del nodo) nella categoria CAT; un prodotto esistente è sostituito solo\n"
    "          con --replace\n"
    "  insert  inserisce il prodotto come nodo N in CONFIG e salva il risultato in OUT\n"
    "          (predefinito: CONFIG stesso)\n"
    "  remove  rimuove un prodotto, o una categoria vuota\n";

struct Options {
    QCommandLineOption json{"json", "JSON"};
    QCommandLineOption node{"node", "numero del nodo", "N"};
    QCommandLineOption category{"category", "categoria", "CAT"};
    QCommandLineOption name{"name", "prodotto", "NOME"};
    QCommandLineOption replace{"replace", "sostituisce"};
    QCommandLineOption output{QStringList{"o", "output"}, "file .nodi", "OUT"};
};

std::string Value(const QCommandLineParser& parser, const QCommandLineOption& option) {
    return parser.value(option).toStdString();
}

// The slot of --node, or nullopt after the complaint.
std::optional<int> SlotOption(const QCommandLineParser& parser, const Options& options,
                              Context& context) {
    const std::optional<int> number = ParseNodeNumber(Value(parser, options.node));
    if (!number) {
        context.Fail("lib: --node deve essere un numero da 1 a " + std::to_string(kLastSlot + 1));
        return std::nullopt;
    }
    return *number - 1;
}

// A library outcome as the exit status: its message on the error stream when not done.
int Finish(const LibraryOutcome& outcome, Context& context) {
    return outcome.Done() ? kExitOk : context.Fail(outcome.Message);
}

int List(const QCommandLineParser& parser, const Options& options, Context& context) {
    const LibraryListing listing = ProductLibrary(LibraryDirectory(context.appDirectory)).List();
    if (parser.isSet(options.json)) {
        JsonWriter json(context.out, false);
        json.BeginObject().Key("categories").BeginArray();
        for (const LibraryCategory& category : listing.Categories) {
            json.BeginObject().Field("name", category.Name).Key("products").BeginArray();
            for (const LibraryProduct& product : category.Products) {
                json.BeginObject()
                    .Field("name", product.Name)
                    .Field("eds", product.Summary.EdsFile())
                    .Field("tx", product.Summary.TxPdoCount)
                    .Field("rx", product.Summary.RxPdoCount)
                    .Field("parameters", product.Summary.ParameterCount)
                    .EndObject();
            }
            json.EndArray().EndObject();
        }
        json.EndArray().EndObject().Finish();
    } else {
        for (const LibraryCategory& category : listing.Categories) {
            context.out << category.Name << '\n';
            for (const LibraryProduct& product : category.Products) {
                context.out << "  " << product.Name << '\n';
            }
        }
    }
    for (const std::string& problem : listing.Problems) {
        context.Fail(problem);
    }
    return listing.Problems.empty() ? kExitOk : kExitFailure;
}

int Save(const QCommandLineParser& parser, const Options& options, Context& context) {
    const std::optional<int> slot = SlotOption(parser, options, context);
    if (!slot) {
        return kExitFailure;
    }
    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory,
                          parser.positionalArguments().first().toStdString());
    const Node& node = workspace.Net.NodeAt(*slot);
    if (node.InUse == 0) {
        return context.Fail("il nodo " + std::to_string(*slot + 1) +
                            " non è nella configurazione");
    }
    const std::string name =
        parser.isSet(options.name) ? Value(parser, options.name) : node.EdsName;
    return Finish(
        ProductLibrary(LibraryDirectory(context.appDirectory))
            .Save(Value(parser, options.category), name, node, parser.isSet(options.replace)),
        context);
}

int Insert(const QCommandLineParser& parser, const Options& options, Context& context) {
    const std::optional<int> slot = SlotOption(parser, options, context);
    if (!slot) {
        return kExitFailure;
    }
    const std::string config = parser.positionalArguments().first().toStdString();
    std::string folder;
    std::string name;
    SplitPath(parser.isSet(options.output) ? Value(parser, options.output) : config, folder, name);
    if (name.empty()) {
        return context.Fail("manca il nome del file di uscita");
    }
    if (folder.empty()) {
        folder = std::string(".") + kPathSeparator;
    }

    const auto product = std::make_unique<Node>();
    const LibraryOutcome loaded =
        ProductLibrary(LibraryDirectory(context.appDirectory))
            .Load(Value(parser, options.category), Value(parser, options.name), *product);
    if (!loaded.Done()) {
        return Finish(loaded, context);
    }
    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory, config);
    NetworkTree tree;
    const InsertionOutcome outcome =
        InsertProducts(workspace.ForNodeImport(), tree, {{product.get(), *slot}});
    if (!outcome.Inserted()) {
        return context.Fail(outcome.Line1 + outcome.Line2);
    }
    for (const ImportMessage& message : outcome.Messages) {
        context.err << "velmora-cli: " << message.Title << ": " << message.Text << " (nodo "
                    << *slot + 1 << ")\n";
    }
    SaveConfiguration(workspace.Net, folder, name);
    return kExitOk;
}

int Remove(const QCommandLineParser& parser, const Options& options, Context& context) {
    const ProductLibrary library(LibraryDirectory(context.appDirectory));
    const std::string category = Value(parser, options.category);
    return Finish(parser.isSet(options.name)
                      ? library.RemoveProduct(category, Value(parser, options.name))
                      : library.RemoveCategory(category),
                  context);
}

} // namespace

int RunLib(const QStringList& args, Context& context) {
    const Options options;
    struct Action {
        const char* name;
        int positional; // CONFIG.nodi or nothing
        std::vector<const QCommandLineOption*> options;
        std::vector<const QCommandLineOption*> required;
        int (*run)(const QCommandLineParser&, const Options&, Context&);
    };
    const Action actions[] = {
        {"list", 0, {&options.json}, {}, List},
        {"save",
         1,
         {&options.node, &options.category, &options.name, &options.replace},
         {&options.node, &options.category},
         Save},
        {"insert",
         1,
         {&options.node, &options.category, &options.name, &options.output},
         {&options.node, &options.category, &options.name},
         Insert},
        {"remove", 0, {&options.category, &options.name}, {&options.category}, Remove},
    };

    const std::string action = args.isEmpty() ? std::string() : args.first().toStdString();
    if (action == "--help" || action == "-h") {
        context.out << kUsage;
        return kExitOk;
    }
    for (const Action& candidate : actions) {
        if (action != candidate.name) {
            continue;
        }
        QCommandLineParser parser;
        for (const QCommandLineOption* option : candidate.options) {
            parser.addOption(*option);
        }
        const std::string command = "lib " + action;
        if (const auto stop = ParseCommandArguments(parser, args.mid(1), command.c_str(), kUsage,
                                                    context, candidate.positional)) {
            return *stop;
        }
        for (const QCommandLineOption* option : candidate.required) {
            if (!parser.isSet(*option)) {
                return context.Fail(command + ": manca --" +
                                    option->names().first().toStdString() +
                                    " (velmora-cli lib --help)");
            }
        }
        return candidate.run(parser, options, context);
    }
    return context.Fail(action.empty()
                            ? "lib: manca list, save, insert o remove (velmora-cli lib --help)"
                            : "lib: azione sconosciuta: " + action + " (velmora-cli lib --help)");
}

} // namespace velmora::cli
