#include "timeout_window.h"

#include "dialog_support.h"
#include "presenters/timeout_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

TimeoutWindow::TimeoutWindow(TimeoutDialog& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("timeoutWindow");
    setWindowTitle(QString::fromStdString(presenter_.Title()));

    repetitions_ = new QLineEdit(QString::fromStdString(presenter_.RepetitionsText()), this);
    repetitions_->setObjectName("repetitions");
    repetitionTime_ = new QLineEdit(QString::fromStdString(presenter_.RepetitionTimeText()), this);
    repetitionTime_->setObjectName("repetitionTime");
    auto* repetitionsLabel = new QLabel(WithAccessKey(TimeoutTexts::RepetitionsLabel), this);
    repetitionsLabel->setBuddy(repetitions_);
    auto* timeLabel = new QLabel(WithAccessKey(TimeoutTexts::RepetitionTimeLabel), this);
    timeLabel->setBuddy(repetitionTime_);

    auto* ok = new QPushButton(tr("Ok"), this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton(tr("Annulla"), this);
    cancel->setObjectName("cancel");

    auto* grid = new QGridLayout;
    grid->addWidget(repetitionsLabel, 0, 0);
    grid->addWidget(repetitions_, 0, 1);
    grid->addWidget(timeLabel, 1, 0);
    grid->addWidget(repetitionTime_, 1, 1);
    grid->addWidget(new QLabel(ToQt(TimeoutTexts::UnitLabel), this), 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(ok, &QPushButton::clicked, this, &TimeoutWindow::Ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TimeoutWindow::Ok() {
    if (RunShowingErrors(dialogs_, [&] {
            presenter_.Ok(repetitions_->text().toStdString(),
                          repetitionTime_->text().toStdString());
        })) {
        accept();
    }
}

} // namespace velmora
