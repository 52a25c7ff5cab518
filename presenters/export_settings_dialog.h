#pragma once

// The logic of the export settings dialog ("Configurazione" in the "Opzioni" menu): one field,
// "Numero max di PDO  fast", and the button "Salva".
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include <string>
#include <string_view>

namespace velmora {

struct Workspace;

namespace ExportSettingsTexts {
inline constexpr std::string_view MaxFastLabel = "Numero max di PDO  fast";
inline constexpr std::string_view SaveButton = "Salva";
} // namespace ExportSettingsTexts

class ExportSettingsDialog {
public:
    // Opening the dialog reads the export settings (ReadExportSettings) and marks the
    // configuration modified.
    explicit ExportSettingsDialog(Workspace& workspace);

    // MaxFastPdo as plain decimal text.
    const std::string& MaxFastPdoText() const { return maxFastText_; }

    // "Salva": MaxFastPdo = the text's leading number (none gives 0) rounded half-even; a
    // value outside -32768..32767 is the Overflow error and nothing changes. Then, on
    // purpose, DefaultFilePath is emptied, and the export extension is set again
    // (SetExportExtension).
    void Save(std::string_view text);

private:
    Workspace& workspace_;
    std::string maxFastText_;
};

} // namespace velmora
