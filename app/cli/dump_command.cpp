// velmora-cli dump CONFIG.nodi: the whole configuration as JSON, every field of every record
// of every slot in use, so that two configurations can be compared with a plain text diff.

#include "cli/cli.h"
#include "cli/configuration_loading.h"
#include "cli/json_writer.h"
#include "session/workspace.h"

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

void WriteMapping(JsonWriter& json, const PdoMapping& mapping) {
    json.BeginObject()
        .Field("Vcb", mapping.Vcb)
        .Field("ObjectIndex", mapping.ObjectIndex)
        .Field("SubIndex", mapping.SubIndex)
        .Field("Length", mapping.Length)
        .Field("Used", mapping.Used)
        .EndObject();
}

void WritePdo(JsonWriter& json, const Pdo& pdo) {
    json.BeginObject()
        .Field("DefaultCobId", pdo.DefaultCobId)
        .Field("Used", pdo.Used)
        .Field("Note", pdo.Note)
        .Field("Direction", pdo.Direction)
        .Field("OwnerSlot", pdo.OwnerSlot)
        .Field("PdoNumber", pdo.PdoNumber);
    json.Key("FlagBlock")
        .BeginArray()
        .Int(pdo.Block.CobId)
        .Int(pdo.Block.Comm)
        .Int(pdo.Block.Inhibit)
        .Int(pdo.Block.Event)
        .EndArray();
    json.Field("NoMapping", pdo.Block.NoMapping);
    const PdoSettings& settings = pdo.Settings;
    json.Key("Settings")
        .BeginObject()
        .Field("CobId", settings.CobId)
        .Field("EventTime", settings.EventTime)
        .Field("InhibitTime", settings.InhibitTime)
        .Field("Comm", settings.Comm)
        .Field("Mode", settings.Mode)
        .Field("Bytes", settings.Bytes)
        .Field("Pcfg", settings.Pcfg)
        .Field("MappingCount", settings.MappingCount);
    json.Key("Mappings").BeginArray();
    for (const PdoMapping& mapping : settings.Mappings) {
        WriteMapping(json, mapping);
    }
    json.EndArray().EndObject().EndObject();
}

void WriteNode(JsonWriter& json, int slot, const Node& node) {
    json.BeginObject()
        .Field("Slot", slot)
        .Field("EdsName", node.EdsName)
        .Field("TxPdoCount", node.TxPdoCount)
        .Field("RxPdoCount", node.RxPdoCount)
        .Field("ParameterCount", node.ParameterCount)
        .Field("Configured", node.Configured)
        .Field("Expanded", node.Expanded)
        .Field("ParameterFolderExpanded", node.ParameterFolderExpanded)
        .Field("InUse", node.InUse);
    json.Key("Pdos").BeginArray();
    for (const Pdo& pdo : node.Pdos) {
        WritePdo(json, pdo);
    }
    json.EndArray();
    json.Key("Parameters").BeginArray();
    for (const NodeParameter& parameter : node.Parameters) {
        json.BeginObject()
            .Field("Name", parameter.Name)
            .Field("ObjectIndex", parameter.ObjectIndex)
            .Field("SubIndex", parameter.SubIndex)
            .Field("ByteCount", parameter.ByteCount)
            .Field("Value", parameter.Value)
            .Field("Used", parameter.Used)
            .EndObject();
    }
    json.EndArray()
        .Field("Reserved", node.Reserved)
        .Field("repetitions", node.repetitions)
        .Field("repetitionTime", node.repetitionTime)
        .EndObject();
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
