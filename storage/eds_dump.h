#pragma once

// The diagnostic dump "prova" of the EDS object table: a random-access file of 46-byte
// records, written by the configuration file's record rules (packed fields, 16-bit length
// and Windows-1252 bytes for texts, zero filler). Record 1 is an empty EdsObject, record
// k + 1 the entry at position k for k = 1..EdsObjectCount. Nothing reads it back.

#include "model/file_writer.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace velmora {

class EdsObjectTable;

inline constexpr std::size_t kEdsDumpRecordLength = 46;

// Writes the records to out. An entry whose fields take more than 46 bytes (any real
// parameter name of some length) stops the dump with the BadRecordLength error; the
// records before it are written.
void WriteEdsDump(const EdsObjectTable& table, std::ostream& out);

// Replaces the file "prova" in the application folder through files. Any error, the record
// length one included, leaves the file that was there as it was.
void WriteEdsDump(const EdsObjectTable& table, const std::string& appDirectory,
                  const FileWriter& files = FileWriter());

} // namespace velmora
