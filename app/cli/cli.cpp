#include "cli/cli.h"

#include "model/runtime_error.h"

#include <exception>

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

void PrintUsage(std::ostream& out) {
    out << "Uso: velmora-cli [--app-dir DIR] COMANDO ARGOMENTI...\n\n"
           "Configuratore di reti CANopen Velmora, senza finestra.\n\n"
           "Opzioni:\n"
           "  --app-dir DIR  cartella dell'applicazione (contiene eds/)\n"
           "  -h, --help     mostra questo aiuto\n\n"
           "Comandi:\n";
    for (const Command& command : Commands()) {
        out << "  " << command.name;
        for (std::size_t i = std::string(command.name).size(); i < 8; ++i) {
            out << ' ';
        }
        out << command.summary << '\n';
    }
    out << "\nvelmora-cli COMANDO --help mostra l'uso di un comando.\n";
}

// The parser's complaint in Italian for the usual cases, Qt's own text otherwise.
std::string ParserError(const QCommandLineParser& parser) {
    if (!parser.unknownOptionNames().isEmpty()) {
        return "opzione sconosciuta: " + parser.unknownOptionNames().first().toStdString();
    }
    return parser.errorText().toStdString();
}

} // namespace

int Context::Fail(const std::string& message) const {
    err << "velmora-cli: " << message << '\n';
    return kExitFailure;
}

std::optional<int> ParseCommandArguments(QCommandLineParser& parser, const QStringList& args,
                                         const char* name, const char* usage, Context& context,
                                         int positionalCount) {
    const QCommandLineOption help(QStringList{"h", "help"});
    parser.addOption(help);
    if (!parser.parse(QStringList{name} + args)) {
        return context.Fail(std::string(name) + ": " + ParserError(parser) + " (velmora-cli " +
                            name + " --help)");
    }
    if (parser.isSet(help)) {
        context.out << usage;
        return kExitOk;
    }
    if (positionalCount >= 0 && parser.positionalArguments().size() != positionalCount) {
        return context.Fail(std::string(name) + ": argomenti non validi (velmora-cli " + name +
                            " --help)");
    }
    return std::nullopt;
}

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"build", "costruisce una configurazione .nodi da uno scenario JSON", RunBuild},
        {"dump", "stampa una configurazione .nodi come JSON", RunDump},
        {"export", "scrive il file per ORV di una configurazione .nodi", RunExport},
        {"check", "analisi dei canali di una configurazione .nodi", RunCheck},
        {"show", "stampa l'albero della rete di una configurazione .nodi", RunShow},
        {"eds", "stampa la tabella degli oggetti di un file EDS come JSON", RunEds},
        {"lib", "la libreria dei prodotti: list, save, insert, remove", RunLib},
    };
    return commands;
}

int Run(const QStringList& arguments, const std::string& defaultAppDir, std::ostream& out,
        std::ostream& err) {
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption appDirOption("app-dir", "cartella dell'applicazione", "DIR");
    const QCommandLineOption helpOption(QStringList{"h", "help"}, "aiuto");
    parser.addOption(appDirOption);
    parser.addOption(helpOption);
    parser.addPositionalArgument("command", "comando");

    Context context{defaultAppDir, out, err};
    if (!parser.parse(QStringList{"velmora-cli"} + arguments)) {
        return context.Fail(ParserError(parser) + " (velmora-cli --help)");
    }
    if (parser.isSet(helpOption)) {
        PrintUsage(out);
        return kExitOk;
    }
    if (parser.isSet(appDirOption)) {
        std::string dir = parser.value(appDirOption).toStdString();
        while (dir.size() > 1 && (dir.back() == '/' || dir.back() == '\\')) {
            dir.pop_back();
        }
        context.appDirectory = dir;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty()) {
        return context.Fail("manca il comando (velmora-cli --help)");
    }
    const std::string name = positional.first().toStdString();
    for (const Command& command : Commands()) {
        if (name == command.name) {
            try {
                return command.run(positional.mid(1), context);
            } catch (const RuntimeError& error) {
                return context.Fail(error.what());
            } catch (const std::exception& error) {
                return context.Fail(error.what());
            }
        }
    }
    return context.Fail("comando sconosciuto: " + name + " (velmora-cli --help)");
}

} // namespace velmora::cli
