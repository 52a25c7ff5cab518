#include "window_dialogs.h"

#include "interfaces/user_dialogs.h"
#include "session/workspace.h"

#include <QMessageBox>
#include <QtGlobal>

namespace velmora {

WindowDialogs::WindowDialogs(Workspace& workspace, UserDialogs& dialogs, AlertDialog& alerts,
                             HelpViewer& help)
    : workspace_(workspace), dialogs_(dialogs), alerts_(alerts), help_(help) {}

WindowDialogs::~WindowDialogs() = default;

std::string WindowDialogs::AboutText() const {
    return std::string("Velmora ") + VELMORA_VERSION +
           "\nConfigurazione di reti CANopen per il controllore programmabile.\n\n"
           "Licenza: MIT\nQt " +
           qVersion() + "\nCartella dell'applicazione: " + workspace_.AppDirectory;
}

bool WindowDialogs::Open(const DialogRequest& request, QWidget* parent) {
    using Kind = DialogRequest::Kind;
    switch (request.Dialog) {
    case Kind::About:
        QMessageBox::about(parent, QObject::tr("Informazioni su Velmora"),
                           QString::fromStdString(AboutText()));
        return false;
    default:
        dialogs_.Inform("Velmora", "Questa finestra non è ancora disponibile.");
        return false;
    }
}

} // namespace velmora
