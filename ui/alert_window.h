#pragma once

// The one modal alert dialog: two lines of text, the check box "Inserisci comunque il
// Cob-Id" when the request offers it, and OK. It returns when the user closes it, by OK,
// Escape or the window's close button.

#include "interfaces/alert_dialog.h"

#include <functional>
#include <memory>

class QDialog;
class QWidget;

namespace velmora {

// The alert's dialog for request over parent, built but not shown: ShowAlert runs it modally,
// the render tool draws it.
std::unique_ptr<QDialog> CreateAlertDialog(const AlertRequest& request, QWidget* parent);

class AlertWindow : public AlertDialog {
public:
    explicit AlertWindow(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    bool ShowAlert(const AlertRequest& request) override;

private:
    QWidget* parent_;
};

} // namespace velmora
