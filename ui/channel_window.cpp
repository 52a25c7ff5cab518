#include "channel_window.h"

#include "dialog_support.h"
#include "export/channel_analysis.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

namespace {

QLineEdit* ValueField(const char* name, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    return field;
}

char LocaleDecimalPoint() {
    const QString point = QLocale().decimalPoint();
    return point.size() == 1 && point.at(0).unicode() < 128 ? point.at(0).toLatin1() : '.';
}

} // namespace

ChannelWindow::ChannelWindow(ChannelDialogState& state, ChannelCounters& counters,
                             UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), state_(state), counters_(counters), dialogs_(dialogs) {
    setObjectName("channelWindow");
    setWindowTitle(ToQt(ChannelTexts::Title));
    setModal(false);

    caption_ = new QLabel(this);
    caption_->setObjectName("caption");
    txFast_ = ValueField("txFast", this);
    txSlow_ = ValueField("txSlow", this);
    rxFast_ = ValueField("rxFast", this);
    rxSlow_ = ValueField("rxSlow", this);
    time_ = ValueField("time", this);
    bitRate_ = new QComboBox(this);
    bitRate_->setObjectName("bitRate");
    for (int rate : kChannelBitRates) {
        bitRate_->addItem(QString::number(rate));
    }
    allowed_ = new QLabel(ToQt(ChannelTexts::Allowed), this);
    allowed_->setObjectName("allowed");
    refused_ = new QLabel(ToQt(ChannelTexts::Refused), this);
    refused_->setObjectName("refused");
    message_ = new QLabel(this);
    message_->setObjectName("message");
    auto* ok = new QPushButton(tr("Ok"), this);
    ok->setObjectName("ok");

    auto* totals = new QGridLayout;
    const std::pair<std::string_view, QLineEdit*> rows[] = {
        {ChannelTexts::TxFastLabel, txFast_},
        {ChannelTexts::TxSlowLabel, txSlow_},
        {ChannelTexts::RxFastLabel, rxFast_},
        {ChannelTexts::RxSlowLabel, rxSlow_},
    };
    int row = 0;
    for (const auto& [label, field] : rows) {
        totals->addWidget(new QLabel(ToQt(label), this), row, 0);
        totals->addWidget(field, row, 1);
        ++row;
    }
    totals->addWidget(new QLabel(ToQt(ChannelTexts::TimeLabel), this), row, 0);
    totals->addWidget(time_, row, 1);
    ++row;
    // The one input of the dialog: Alt+B reaches it.
    auto* bitRateLabel = new QLabel(WithAccessKey(ChannelTexts::BitRateLabel), this);
    bitRateLabel->setBuddy(bitRate_);
    totals->addWidget(bitRateLabel, row, 0);
    totals->addWidget(bitRate_, row, 1);

    auto* verdict = new QHBoxLayout;
    verdict->addWidget(allowed_);
    verdict->addWidget(refused_);
    verdict->addStretch();
    verdict->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption_);
    layout->addLayout(totals);
    layout->addLayout(verdict);
    layout->addWidget(message_);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    ClearAutoDefault(this);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(bitRate_, &QComboBox::activated, this, &ChannelWindow::ChooseBitRate);
}

void ChannelWindow::Refresh() {
    caption_->setText(QString::fromStdString(state_.Caption));
    txFast_->setText(QString::number(state_.TxFast));
    txSlow_->setText(QString::number(state_.TxSlow));
    rxFast_->setText(QString::number(state_.RxFast));
    rxSlow_->setText(QString::number(state_.RxSlow));
    time_->setText(QString::fromStdString(state_.TimeLine(LocaleDecimalPoint())));
    {
        const QSignalBlocker blocker(bitRate_);
        bitRate_->setCurrentIndex(bitRate_->findText(QString::fromStdString(state_.BitRate)));
    }
    allowed_->setVisible(state_.ShowsAllowed);
    refused_->setVisible(state_.ShowsRefused);
    message_->setText(QString::fromStdString(state_.Message));
    QPalette palette = message_->palette();
    palette.setColor(QPalette::WindowText,
                     state_.Colour == MessageColour::Red ? QColor(Qt::red) : QColor(Qt::blue));
    message_->setPalette(palette);
    message_->setVisible(state_.MessageVisible());
}

void ChannelWindow::ShowOverParent() {
    Refresh();
    if (parentWidget() != nullptr) {
        parentWidget()->setEnabled(false);
    }
    EnableOverParent(*this);
    show();
    raise();
    activateWindow();
}

void ChannelWindow::ChooseBitRate(int item) {
    RunShowingErrors(dialogs_,
                     [&] { RecomputeTime(bitRate_->itemText(item).toInt(), counters_, state_); });
    Refresh();
}

void ChannelWindow::done(int result) {
    QDialog::done(result);
    state_.Visible = false;
    if (QWidget* window = parentWidget()) {
        window->setEnabled(true);
        window->raise();
        window->activateWindow();
    }
}

} // namespace velmora
