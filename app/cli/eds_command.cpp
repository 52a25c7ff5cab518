// velmora-cli eds FILE: the EDS object table of one file, as JSON.

#include "cli/cli.h"
#include "cli/json_writer.h"
#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "model/paths.h"

#include <QCommandLineParser>

namespace velmora::cli {

namespace {

const char* const kEdsUsage =
    "Uso: velmora-cli eds FILE\n\n"
    "Carica FILE con LoadEds (la sua cartella fa da cartella EDS) e CountEdsPdos e\n"
    "stampa come JSON la tabella degli oggetti, dalla posizione 1 a EdsObjectCount.\n";

void WriteObject(JsonWriter& json, int position, const EdsObject& object) {
    json.BeginObject()
        .Field("position", static_cast<long long>(position))
        .Field("index", object.IndexText)
        .Field("sub_index", object.SubIndexText)
        .Field("is_main", object.IsMainObject != 0)
        .Field("name", object.ParameterName)
        .Field("object_type", object.ObjectType)
        .Field("data_type", object.DataType)
        .Field("low_limit", object.LowLimit)
        .Field("high_limit", object.HighLimit)
        .Field("access_type", object.AccessType)
        .Field("default_value", object.DefaultValue)
        .Field("pdo_mapping", object.PdoMapping != 0)
        .Field("obj_flags", object.ObjFlags)
        .Field("sub_number", object.SubNumber)
        .EndObject();
}

} // namespace

int RunEds(const QStringList& args, Context& context) {
    QCommandLineParser parser;
    if (const auto stop = ParseCommandArguments(parser, args, "eds", kEdsUsage, context, 1)) {
        return *stop;
    }
    const QStringList positional = parser.positionalArguments();

    std::string folder;
    std::string name;
    SplitPath(positional.first().toStdString(), folder, name);
    EdsObjectTable table;
    LoadEds(table, folder, name);
    const EdsPdoCounts counts = CountEdsPdos(table);

    JsonWriter json(context.out);
    json.BeginObject()
        .Field("object_count", GetEdsObjectCount(table))
        .Field("granularity", table.EdsGranularity())
        .Field("tx_pdo_count", counts.txCount)
        .Field("rx_pdo_count", counts.rxCount)
        .Key("objects")
        .BeginArray();
    for (int position = 1; position <= GetEdsObjectCount(table); ++position) {
        WriteObject(json, position, table.At(position));
    }
    json.EndArray().EndObject().Finish();
    return kExitOk;
}

} // namespace velmora::cli
