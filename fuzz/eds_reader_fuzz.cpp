// Feeds arbitrary bytes to LoadEds as if they were an EDS file, then runs the look-ups that
// node creation makes. Every outcome but a RuntimeError or a clean load is a bug.

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/eds_text.h"
#include "model/runtime_error.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // One table for the whole run, as in the program: every load starts by resetting it.
    static velmora::EdsObjectTable* table = new velmora::EdsObjectTable;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::istringstream in(bytes);
    try {
        velmora::LoadEds(*table, in);
    } catch (const velmora::RuntimeError&) {
        // The section and table limits; what was read so far stays and is looked up below.
    }
    const velmora::EdsPdoCounts counts = velmora::CountEdsPdos(*table);
    if (counts.txCount > 17 || counts.rxCount > 17) {
        __builtin_trap();
    }
    for (std::int16_t sub : {-1, 0, 1, 2}) {
        velmora::FindEdsObject(*table, 0x1A00, sub);
        velmora::FindEdsObject(*table, 0, sub);
    }
    const int count = velmora::GetEdsObjectCount(*table);
    if (count < 1 || count > velmora::kLastEdsObject) {
        __builtin_trap();
    }
    velmora::GetEdsObject(*table, count);
    // The text rules on the raw input as one line.
    const std::string line = bytes.substr(0, 256);
    velmora::ParseEdsSectionName(line);
    velmora::ParseEdsNumber(line, false);
    velmora::ParseEdsNumber(line, true);
    velmora::ParseEdsText(line);
    return 0;
}
