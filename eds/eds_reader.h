#pragma once

// LoadEds: reads one EDS file (the CiA 306 text format) into the EDS object table. The reader
// is deliberately simple and line-oriented: it recognises object sections by their names
// and a fixed list of keys by substring, and keeps each value as text or as a number.
//
// The file is Windows-1252 text; lines end at CR LF, LF or a lone CR, and a last line
// without an end is a line. The load is not transactional: a run-time error leaves the
// entries read so far in the table.

#include <iosfwd>
#include <string>

namespace velmora {

class EdsObjectTable;

// The file an EDS name stands for: edsDirectory + name when name holds a ".", else
// edsDirectory + name + ".eds".
std::string EdsPath(const std::string& edsDirectory, const std::string& name);

// Loads the file EdsPath(edsDirectory, name), its name matched regardless of case. A file
// that cannot be opened is the FileNotFound error (a folder: PathFileAccess), raised
// before the table changes.
void LoadEds(EdsObjectTable& table, const std::string& edsDirectory, const std::string& name);

// Loads EDS text from a stream. The table is reset (EdsObjectCount 1, entries 1..4000
// emptied) and every object section is stored from position 2 on. A section of more than
// 100 lines (the line that ends it included) or a 4000th object section is the
// SubscriptOutOfRange error; the entry that failed stays stored. EdsGranularity keeps its
// value unless a "granularity=" line outside the object sections sets it.
void LoadEds(EdsObjectTable& table, std::istream& in);

} // namespace velmora
