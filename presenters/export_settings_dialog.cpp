#include "presenters/export_settings_dialog.h"

#include "model/network.h"
#include "model/numeric.h"
#include "model/text.h"
#include "session/workspace.h"

namespace velmora {

ExportSettingsDialog::ExportSettingsDialog(Workspace& workspace) : workspace_(workspace) {
    ReadExportSettings(workspace_.Net);
    workspace_.Modified = kTrue;
    maxFastText_ = DecimalText(workspace_.Net.MaxFastPdo());
}

void ExportSettingsDialog::Save(std::string_view text) {
    const std::int16_t maxFast = ToInt16(ReadNumber(text));
    Network& network = workspace_.Net;
    network.MaxFastPdo() = maxFast;
    network.DefaultFilePath().clear();
    SetExportExtension(network);
    maxFastText_ = DecimalText(maxFast);
}

} // namespace velmora
