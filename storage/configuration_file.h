#pragma once

// The configuration file (".nodi"): random-access records of 15304 bytes, each one record of
// the Node layout. Record 1 carries the format mark, record 2 the export settings, and every
// further record one node in use, in ascending slot order. A node record does not carry its
// slot: loading puts it back into the slot named by the OwnerSlot of its PDO 0.
//
// Saving and loading are all or nothing: a save that fails leaves the file on disk as it was,
// a load that fails leaves the network as it was, and the error surfaces as a RuntimeError
// that names the file.

#include "model/file_writer.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace velmora {

struct Network;
struct Node;
class RecordWriter;
class RecordReader;

inline constexpr std::size_t kConfigurationRecordLength = 15304;

// The field sequence of one Node-layout record, shared by the writer and the reader.
void WriteNodeRecord(RecordWriter& writer, const Node& node);
void ReadNodeRecord(RecordReader& reader, Node& node);

// Walks every field of one Node-layout record without storing anything: a field that runs
// past the record's end is the BadRecordLength error. A record that passes can be read with
// ReadNodeRecord without failing half-way.
void ValidateNodeRecord(std::string_view record);

// Writes directory + name, or with an empty directory rewrites the current file
// (Directory + FileName). Deletes that path + ".nodi" first (a missing file is not an error),
// then replaces the file as a whole through files. Once the whole file is in place, Directory
// and FileName name it and Saved is -1. A node whose record exceeds 15304 bytes, a file that
// cannot be written, or a NodeCount larger than the nodes in use (the walk passes slot 500)
// is a RuntimeError naming the file; the file on disk, Directory, FileName and Saved then
// keep what they held.
void SaveConfiguration(Network& network, const std::string& directory, const std::string& name,
                       const FileWriter& files = FileWriter());

// Writes the records of a save to out: the mark, the export settings, then the nodes in use
// in slot order until NodeCount of them are written. Errors as for SaveConfiguration; the
// records before the failing one are already written. Does not touch Saved.
void WriteConfiguration(const Network& network, std::ostream& out);

// 1 when record 1 of path holds the format mark (Parameters 3, 4 and 5 reading as the
// numbers 1, 1 and 0), 0 otherwise; a file shorter than a record is read as far as it goes.
// A file that cannot be opened is a RuntimeError.
std::int16_t IsCurrentFormat(const std::string& path);
std::int16_t IsCurrentFormat(std::istream& in);

// Replaces the network with the file directory + name (directory ends with a separator).
// Every record is read and checked first: a file without the format mark (UnsupportedFormat),
// missing records 1 or 2, a trailing partial record, a field running past its record, or a
// node record whose OwnerSlot is outside 0..500 stop the load with a RuntimeError naming the
// file (and the record), and the network keeps exactly what it held. Only then is the network
// emptied (NewNetwork with appDirectory), the export path derived, record 2 read into the
// export settings and every node record stored into its slot, a later record of a slot
// replacing an earlier one; NodeCount becomes the number of node records, Saved -1, and
// Directory and FileName name the file. The channel counters are the caller's to recount.
void LoadConfiguration(Network& network, const std::string& appDirectory,
                       const std::string& directory, const std::string& name);
// The same, reading the file's bytes from in (positioned at its start).
void LoadConfiguration(Network& network, const std::string& appDirectory, std::istream& in,
                       const std::string& directory, const std::string& name);

// Directory = directory, FileName = name, ExportPath = directory + name without its last five
// characters + kExportExtension, whatever ExportExtension holds. A name of fewer than five
// characters is the InvalidArgument error.
void SetConfigurationName(Network& network, const std::string& directory, const std::string& name);

// The export path derived from a configuration's folder and file name, as above.
std::string DeriveExportPath(const std::string& directory, const std::string& name);

} // namespace velmora
