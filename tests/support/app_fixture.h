#pragma once

// An application folder for tests that build nodes from EDS files: a temporary folder with
// an eds/ subfolder, a workspace in the state start-up leaves it in, and a small drive EDS.

#include "session/workspace.h"
#include "support/temp_dir.h"

#include <string>

namespace velmora::test {

// A drive with two TX PDOs (0x1800 with Statusword and Position actual value mapped, 0x1801
// with a read-only, fixed mapping of Statusword) and one RX PDO (0x1400 with Controlword),
// plus mappable and writable objects: Controlword 6040 (rw, UNSIGNED16), Statusword 6041
// (ro, UNSIGNED16), Modes of operation 6060 (rw, INTEGER8, not mappable), Position actual
// value 6064 (ro, INTEGER32) and a record 2000 with two UNSIGNED8 inputs.
extern const char* const kDriveEds;

class AppFixture {
public:
    AppFixture();

    Workspace& Ws() { return workspace_; }
    const std::string& AppDir() const { return dir_.Path(); }
    // Writes an EDS file into the application's eds/ folder and refreshes EdsFiles.
    void WriteEds(const std::string& fileName, const std::string& text);
    // Creates a node from eds/drive.eds (written on first use) in slot, counting it in
    // NodeCount as the add-node dialog does.
    Node& AddDrive(int slot);

private:
    TempDir dir_;
    Workspace workspace_;
};

} // namespace velmora::test
