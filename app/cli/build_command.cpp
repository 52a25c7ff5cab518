// velmora-cli build SCENARIO.json -o OUT.nodi: builds a configuration the way a user does in
// the GUI (new network, add nodes, edit PDOs and parameters) and saves it.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "eds/eds_reader.h"
#include "eds/node_creation.h"
#include "export/node_timeouts.h"
#include "model/network.h"
#include "model/paths.h"
#include "model/text.h"
#include "pdo/mode_choice.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"

#include <cmath>
#include <initializer_list>
#include <stdexcept>

#include <QCommandLineParser>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velmora::cli {

namespace {

const char* const kBuildUsage =
    "Uso: velmora-cli build SCENARIO.json -o OUT.nodi\n\n"
    "Costruisce una configurazione da uno scenario JSON, come farebbe l'utente\n"
    "(nuova rete, nodi aggiunti dagli EDS della cartella eds/, PDO e parametri\n"
    "modificati) e la salva in OUT.nodi.\n";

// A scenario the command cannot use; the message names the offending element.
class ScenarioError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string Text(const QString& text) {
    return text.toStdString();
}

void CheckKeys(const QJsonObject& object, std::initializer_list<const char*> allowed,
               const std::string& where) {
    for (auto it = object.begin(); it != object.end(); ++it) {
        bool known = false;
        for (const char* key : allowed) {
            known = known || it.key() == QLatin1String(key);
        }
        if (!known) {
            throw ScenarioError(where + ": chiave sconosciuta \"" + Text(it.key()) + "\"");
        }
    }
}

long long Integer(const QJsonValue& value, long long min, long long max, const std::string& what) {
    const double number = value.toDouble();
    if (!value.isDouble() || number != std::floor(number) || number < static_cast<double>(min) ||
        number > static_cast<double>(max)) {
        throw ScenarioError(what + " deve essere un intero tra " + std::to_string(min) + " e " +
                            std::to_string(max));
    }
    return static_cast<long long>(number);
}

std::string String(const QJsonValue& value, const std::string& what) {
    if (!value.isString()) {
        throw ScenarioError(what + " deve essere un testo");
    }
    return Text(value.toString());
}

// An array of arrays of `width` texts, at most `most` of them.
std::vector<std::vector<std::string>> Rows(const QJsonValue& value, std::size_t width,
                                           std::size_t most, const std::string& what) {
    if (!value.isArray()) {
        throw ScenarioError(what + " deve essere una lista");
    }
    const QJsonArray rows = value.toArray();
    if (static_cast<std::size_t>(rows.size()) > most) {
        throw ScenarioError(what + ": al massimo " + std::to_string(most) + " elementi");
    }
    std::vector<std::vector<std::string>> result;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const std::string where = what + "[" + std::to_string(i) + "]";
        const QJsonArray row = rows[i].toArray();
        if (!rows[i].isArray() || static_cast<std::size_t>(row.size()) != width) {
            throw ScenarioError(where + " deve essere una lista di " + std::to_string(width) +
                                " testi");
        }
        std::vector<std::string> texts;
        for (const QJsonValue& text : row) {
            texts.push_back(String(text, where));
        }
        result.push_back(std::move(texts));
    }
    return result;
}

class ScenarioBuilder {
public:
    ScenarioBuilder(Workspace& workspace, Context& context)
        : workspace_(workspace), context_(context) {}

    // Applies the whole scenario; a ScenarioError stops it and nothing is saved.
    void Apply(const QJsonObject& scenario) {
        CheckKeys(scenario, {"max_fast_pdo", "nodes"}, "scenario");
        Network& network = workspace_.Net;
        if (scenario.contains("max_fast_pdo")) {
            network.MaxFastPdo() = static_cast<std::int16_t>(
                Integer(scenario["max_fast_pdo"], 0, 32767, "\"max_fast_pdo\""));
        }
        if (!scenario.contains("nodes")) {
            return;
        }
        if (!scenario["nodes"].isArray()) {
            throw ScenarioError("\"nodes\" deve essere una lista");
        }
        const QJsonArray nodes = scenario["nodes"].toArray();
        for (qsizetype i = 0; i < nodes.size(); ++i) {
            const std::string where = "nodes[" + std::to_string(i) + "]";
            if (!nodes[i].isObject()) {
                throw ScenarioError(where + " deve essere un oggetto");
            }
            AddNode(nodes[i].toObject(), where);
        }
    }

private:
    void AddNode(const QJsonObject& object, const std::string& where) {
        CheckKeys(object, {"node", "eds", "timeout", "pdos", "parameters"}, where);
        if (!object.contains("node") || !object.contains("eds")) {
            throw ScenarioError(where + ": servono \"node\" ed \"eds\"");
        }
        const int number =
            static_cast<int>(Integer(object["node"], 1, kLastSlot + 1, where + ".node"));
        const std::string eds = String(object["eds"], where + ".eds");
        const int slot = number - 1;
        Network& network = workspace_.Net;
        if (network.NodeAt(slot).InUse != 0) {
            throw ScenarioError("Il nodo " + std::to_string(number) + " è già occupato da " +
                                network.NodeAt(slot).EdsName);
        }
        if (eds.empty() ||
            !IsExistingFile(ResolveNameIgnoringCase(EdsPath(workspace_.EdsDirectory(), eds)))) {
            throw ScenarioError("Eds non trovato:" + eds);
        }
        for (const ImportMessage& message :
             AddNodeFromEds(workspace_.ForNodeImport(), eds, slot)) {
            context_.err << "velmora-cli: " << message.Title << ": " << message.Text << " (nodo "
                         << number << ", " << eds << ")\n";
        }
        ++network.NodeCount;

        if (object.contains("timeout")) {
            const QJsonArray timeout = object["timeout"].toArray();
            if (!object["timeout"].isArray() || timeout.size() != 2) {
                throw ScenarioError(where + ".timeout deve essere [repetitions, repetitionTime]");
            }
            SetNodeTimeout(network, slot,
                           static_cast<std::int16_t>(
                               Integer(timeout[0], -32768, 32767, where + ".timeout[0]")),
                           static_cast<std::int16_t>(
                               Integer(timeout[1], -32768, 32767, where + ".timeout[1]")));
        }
        if (object.contains("pdos")) {
            if (!object["pdos"].isObject()) {
                throw ScenarioError(where + ".pdos deve essere un oggetto");
            }
            const QJsonObject pdos = object["pdos"].toObject();
            for (auto it = pdos.begin(); it != pdos.end(); ++it) {
                EditPdo(slot, Text(it.key()), it.value(), where + ".pdos." + Text(it.key()));
            }
        }
        if (object.contains("parameters")) {
            Node& node = network.NodeAt(slot);
            const auto rows =
                Rows(object["parameters"], 5,
                     static_cast<std::size_t>(kLastParameter + 1 - node.ParameterCount),
                     where + ".parameters");
            for (const auto& row : rows) {
                NodeParameter& parameter = node.ParameterAt(node.ParameterCount);
                parameter = {row[0], row[1], row[2], row[3], row[4], kTrue};
                ++node.ParameterCount;
                node.Configured = kTrue;
            }
        }
    }

    // "TXk" is Pdos[k], "RXk" is Pdos[TxPdoCount + k]; k below the direction's count.
    int PdoPosition(const Node& node, const std::string& key, const std::string& where) {
        const bool tx = key.rfind("TX", 0) == 0;
        const bool rx = key.rfind("RX", 0) == 0;
        const std::string digits = key.size() > 2 ? key.substr(2) : "";
        bool number = !digits.empty() && digits.size() <= 4;
        for (char c : digits) {
            number = number && c >= '0' && c <= '9';
        }
        if ((!tx && !rx) || !number) {
            throw ScenarioError(where + ": la chiave deve essere TXk o RXk");
        }
        const int k = std::stoi(digits);
        const int count = tx ? node.TxPdoCount : node.RxPdoCount;
        if (k >= count) {
            throw ScenarioError(where + ": il nodo ha " + std::to_string(count) + " PDO " +
                                key.substr(0, 2));
        }
        return tx ? k : node.TxPdoCount + k;
    }

    void EditPdo(int slot, const std::string& key, const QJsonValue& value,
                 const std::string& where) {
        Node& node = workspace_.Net.NodeAt(slot);
        Pdo& pdo = node.PdoAt(PdoPosition(node, key, where));
        if (!value.isObject()) {
            throw ScenarioError(where + " deve essere un oggetto");
        }
        const QJsonObject fields = value.toObject();
        CheckKeys(fields,
                  {"mode", "cob_id", "bytes", "comm", "inhibit", "event", "pcfg", "mappings"},
                  where);
        PdoSettings& settings = pdo.Settings;
        const struct {
            const char* key;
            std::string* field;
        } texts[] = {{"cob_id", &settings.CobId},
                     {"bytes", &settings.Bytes},
                     {"comm", &settings.Comm},
                     {"inhibit", &settings.InhibitTime},
                     {"event", &settings.EventTime}};
        if (fields.contains("mode")) {
            settings.Mode = StoredModeText(String(fields["mode"], where + ".mode"));
        }
        for (const auto& text : texts) {
            if (fields.contains(text.key)) {
                *text.field = String(fields[text.key], where + "." + text.key);
            }
        }
        if (fields.contains("pcfg")) {
            settings.Pcfg =
                static_cast<std::int16_t>(Integer(fields["pcfg"], -32768, 32767, where + ".pcfg"));
        }
        if (fields.contains("mappings")) {
            const auto rows = Rows(fields["mappings"], 4, kLastMapping + 1, where + ".mappings");
            settings.Mappings.fill(PdoMapping{});
            for (std::size_t i = 0; i < rows.size(); ++i) {
                const auto& row = rows[i];
                settings.Mappings[i] = {row[0], row[1], row[2], row[3], kTrue};
            }
            settings.MappingCount = static_cast<std::int16_t>(rows.size());
        }
        // As a save from the PDO editor does.
        pdo.Used = kTrue;
        node.Configured = kTrue;
    }

    Workspace& workspace_;
    Context& context_;
};

} // namespace

int RunBuild(const QStringList& args, Context& context) {
    QCommandLineParser parser;
    const QCommandLineOption outOption(QStringList{"o", "output"}, "file .nodi", "OUT");
    parser.addOption(outOption);
    if (const auto stop = ParseCommandArguments(parser, args, "build", kBuildUsage, context, 1)) {
        return *stop;
    }
    if (!parser.isSet(outOption)) {
        return context.Fail("build: manca -o OUT.nodi (velmora-cli build --help)");
    }
    const QStringList positional = parser.positionalArguments();

    const QString scenarioPath = positional.first();
    QFile file(scenarioPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return context.Fail("impossibile leggere lo scenario " + Text(scenarioPath) + ": " +
                            Text(file.errorString()));
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        return context.Fail("scenario " + Text(scenarioPath) + ": JSON non valido (" +
                            Text(parseError.errorString()) + ", posizione " +
                            std::to_string(parseError.offset) + ")");
    }
    if (!document.isObject()) {
        return context.Fail("scenario " + Text(scenarioPath) + ": serve un oggetto JSON");
    }

    std::string folder;
    std::string name;
    SplitPath(Text(parser.value(outOption)), folder, name);
    if (name.empty()) {
        return context.Fail("manca il nome del file di uscita");
    }
    if (folder.empty()) {
        folder = std::string(".") + kPathSeparator;
    }

    Workspace workspace;
    StartWorkspace(workspace, context.appDirectory);
    try {
        ScenarioBuilder(workspace, context).Apply(document.object());
    } catch (const ScenarioError& error) {
        return context.Fail(error.what());
    }
    SaveConfiguration(workspace.Net, folder, name);
    return kExitOk;
}

} // namespace velmora::cli
