#pragma once

// The channel dialog ("Controllo Canali"): the four totals of fast and slow PDOs, the estimated
// time of one fast cycle at the chosen bit rate, the verdict on the number of fast PDOs and, in
// the tall layout of the export, the message line in blue or red. One instance lives as long as
// the main window; it is shown beside it, not modal, with the window disabled until it closes.

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;

namespace velmora {

struct ChannelCounters;
struct ChannelDialogState;
class UserDialogs;

class ChannelWindow : public QDialog {
    Q_OBJECT
public:
    ChannelWindow(ChannelDialogState& state, ChannelCounters& counters, UserDialogs& dialogs,
                  QWidget* parent);

    // Shows the state, disables the parent window and shows the dialog in front of it.
    void ShowOverParent();
    // Shows the state again.
    void Refresh();

    void done(int result) override;

private:
    void ChooseBitRate(int item);

    ChannelDialogState& state_;
    ChannelCounters& counters_;
    UserDialogs& dialogs_;
    QLabel* caption_;
    QLineEdit* txFast_;
    QLineEdit* txSlow_;
    QLineEdit* rxFast_;
    QLineEdit* rxSlow_;
    QLineEdit* time_;
    QComboBox* bitRate_;
    QLabel* allowed_;
    QLabel* refused_;
    QLabel* message_;
};

} // namespace velmora
