// velmora-cli dump CONFIG.nodi: the whole configuration as JSON, every field of every record
// of every slot in use, so that two configurations can be compared with a plain text diff.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "cli/json_writer.h"
#include "session/workspace.h"
#include "storage/node_fields.h"

#include <string>
#include <string_view>
#include <vector>

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

// Writes the fields of a Node-layout record as JSON, keys named as the fields: a nested
// record is an object, a list an array whose elements go without keys.
class JsonFields {
public:
    explicit JsonFields(JsonWriter& json) : json_(json) {}

    void Field(std::string_view name, const std::string& text) { Key(name).String(text); }
    void Field(std::string_view name, std::int16_t number) { Key(name).Int(number); }
    void Field(std::string_view name, std::int32_t number) { Key(name).Int(number); }

    void BeginList(std::string_view name) {
        Key(name).BeginArray();
        inList_.push_back(true);
    }
    void EndList() { End(); }
    void BeginRecord(std::string_view name) {
        Key(name).BeginObject();
        inList_.push_back(false);
    }
    void EndRecord() { End(); }

private:
    JsonWriter& Key(std::string_view name) {
        if (inList_.empty() || !inList_.back()) {
            json_.Key(name);
        }
        return json_;
    }
    void End() {
        if (inList_.back()) {
            json_.EndArray();
        } else {
            json_.EndObject();
        }
        inList_.pop_back();
    }

    JsonWriter& json_;
    std::vector<bool> inList_; // one per open list or record
};

void WriteNode(JsonWriter& json, int slot, const Node& node) {
    json.BeginObject().Field("Slot", slot);
    JsonFields fields(json);
    VisitNodeFields(fields, node);
    json.EndObject();
}

} // namespace

int RunDump(const QStringList& args, Context& context) {
    static const char* const usage =
        "Uso: velmora-cli dump CONFIG.nodi\n\n"
        "Carica CONFIG e stampa l'intera configurazione come JSON: i campi generali e ogni\n"
        "slot in uso con tutti i campi dei suoi record.\n";
    QCommandLineParser parser;
    if (const auto stop = ParseCommandArguments(parser, args, "dump", usage, context, 1)) {
        return *stop;
    }
    Workspace workspace;
    LoadConfigurationFile(workspace, context.appDirectory,
                          parser.positionalArguments().first().toStdString());

    const Network& network = workspace.Net;
    JsonWriter json(context.out);
    json.BeginObject()
        .Field("FileName", network.FileName)
        .Field("Directory", network.Directory)
        .Field("NodeCount", network.NodeCount)
        .Field("DefaultFilePath", network.DefaultFilePath())
        .Field("MaxFastPdo", network.MaxFastPdo())
        .Field("ExportPath", network.ExportPath);
    json.Key("Nodes").BeginArray();
    for (int slot = 0; slot <= kLastSlot; ++slot) {
        if (network.NodeAt(slot).InUse != 0) {
            WriteNode(json, slot, network.NodeAt(slot));
        }
    }
    json.EndArray().EndObject().Finish();
    return kExitOk;
}

} // namespace velmora::cli
