#include "storage/eds_dump.h"

#include "eds/eds_object_table.h"
#include "model/paths.h"
#include "storage/record_io.h"

#include <ostream>

namespace velmora {

namespace {

void WriteRecord(std::ostream& out, RecordWriter& writer, const EdsObject& object) {
    writer.Reset();
    writer.Field(object.IndexText);
    writer.Field(object.SubIndexText);
    writer.Field(object.IsMainObject);
    writer.Field(object.ParameterName);
    writer.Field(object.ObjectType);
    writer.Field(object.DataType);
    writer.Field(object.LowLimit);
    writer.Field(object.HighLimit);
    writer.Field(object.AccessType);
    writer.Field(object.DefaultValue);
    writer.Field(object.PdoMapping);
    writer.Field(object.ObjFlags);
    writer.Field(object.SubNumber);
    out.write(writer.Bytes().data(), static_cast<std::streamsize>(writer.Bytes().size()));
}

} // namespace

void WriteEdsDump(const EdsObjectTable& table, std::ostream& out) {
    RecordWriter writer(kEdsDumpRecordLength);
    WriteRecord(out, writer, EdsObject{});
    for (int position = 1; position <= table.EdsObjectCount(); ++position) {
        WriteRecord(out, writer, table.At(position));
    }
}

void WriteEdsDump(const EdsObjectTable& table, const std::string& appDirectory,
                  const FileWriter& files) {
    files.Replace(appDirectory + kPathSeparator + "prova",
                  [&](std::ostream& out) { WriteEdsDump(table, out); });
}

} // namespace velmora
