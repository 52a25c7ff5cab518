#include "parameter_window.h"

#include "dialog_support.h"
#include "presenters/parameter_editor.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolBar>

namespace velmora {

ParameterWindow::ParameterWindow(ParameterEditor& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("parameterWindow");
    setWindowTitle(QString::fromStdString(presenter_.Title()));

    auto* toolBar = new QToolBar(this);
    toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    QAction* saveAction = toolBar->addAction(style()->standardIcon(QStyle::SP_DialogSaveButton),
                                             ToQt(ParameterEditorTexts::SaveButton).remove('&'));
    saveAction->setObjectName("saveParameterButton");
    QAction* closeAction =
        toolBar->addAction(style()->standardIcon(QStyle::SP_DialogCloseButton), tr("Chiudi"));
    closeAction->setObjectName("closeButton");

    objects_ = new QComboBox(this);
    objects_->setObjectName("objects");
    objects_->setEditable(true);
    objects_->setInsertPolicy(QComboBox::NoInsert);
    for (const std::string& item : presenter_.ObjectItems()) {
        objects_->addItem(QString::fromStdString(item));
    }
    name_ = new QLabel(this);
    name_->setObjectName("name");
    index_ = new QLineEdit(this);
    index_->setObjectName("index");
    index_->installEventFilter(this);
    subIndex_ = new QLineEdit(this);
    subIndex_->setObjectName("subIndex");
    nByte_ = new QLineEdit(this);
    nByte_->setObjectName("nByte");
    value_ = new QLineEdit(this);
    value_->setObjectName("value");
    decimal_ = new QRadioButton(ToQt(ParameterEditorTexts::DecimalOption), this);
    decimal_->setObjectName("decimal");
    hexadecimal_ = new QRadioButton(ToQt(ParameterEditorTexts::HexadecimalOption), this);
    hexadecimal_->setObjectName("hexadecimal");
    auto* baseGroup = new QButtonGroup(this);
    baseGroup->addButton(decimal_);
    baseGroup->addButton(hexadecimal_);
    auto* save = new QPushButton(ToQt(ParameterEditorTexts::SaveButton), this);
    save->setObjectName("saveParameter");

    auto* form = new QFormLayout;
    auto row = [&](const QString& text, QWidget* field) {
        auto* label = new QLabel(text, this);
        label->setBuddy(field);
        form->addRow(label, field);
    };
    form->addRow(objects_);
    form->addRow(tr("Name"), name_);
    row(tr("&Index"), index_);
    auto* base = new QHBoxLayout;
    base->addWidget(decimal_);
    base->addWidget(hexadecimal_);
    form->addRow(ToQt(ParameterEditorTexts::BaseLabel), base);
    row(tr("&Subindex"), subIndex_);
    row(tr("&NByte"), nByte_);
    row(tr("&Valore"), value_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(toolBar);
    layout->addLayout(form);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(objects_, &QComboBox::activated, this,
            [this](int item) { Forward([&] { presenter_.PickObject(item); }); });
    connect(objects_->lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.Fields().ComboText = text.toStdString(); });
    const std::pair<QLineEdit*, std::string ParameterFields::*> texts[] = {
        {index_, &ParameterFields::IndexText},
        {subIndex_, &ParameterFields::SubIndexText},
        {nByte_, &ParameterFields::NByteText},
        {value_, &ParameterFields::ValueText},
    };
    for (const auto& [field, member] : texts) {
        connect(field, &QLineEdit::textEdited, this, [this, member](const QString& text) {
            presenter_.Fields().*member = text.toStdString();
        });
    }
    connect(value_, &QLineEdit::returnPressed, this, &ParameterWindow::Save);
    connect(decimal_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.SetBase("d"); }); });
    connect(hexadecimal_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.SetBase("h"); }); });
    connect(save, &QPushButton::clicked, this, &ParameterWindow::Save);
    connect(saveAction, &QAction::triggered, this, &ParameterWindow::Save);
    connect(closeAction, &QAction::triggered, this, &QDialog::reject);
    Refresh();
}

template <typename Action> void ParameterWindow::Forward(Action&& action) {
    RunShowingErrors(dialogs_, std::forward<Action>(action));
    Refresh();
}

void ParameterWindow::Save() {
    const auto result = Attempt(dialogs_, [&] { return presenter_.SaveParameter(); });
    Refresh();
    if (result && result->Closes) {
        changed_ = result->NetworkChanged;
        accept();
    }
}

void ParameterWindow::Refresh() {
    const ParameterFields& fields = presenter_.Fields();
    {
        const QSignalBlocker blocker(objects_);
        const QString text = QString::fromStdString(fields.ComboText);
        const int item = objects_->findText(text);
        if (item >= 0) {
            objects_->setCurrentIndex(item);
        } else if (objects_->currentText() != text) {
            objects_->setEditText(text);
        }
    }
    name_->setText(QString::fromStdString(fields.NameText));
    ShowText(index_, fields.IndexText);
    ShowText(subIndex_, fields.SubIndexText);
    ShowText(nByte_, fields.NByteText);
    ShowText(value_, fields.ValueText);
    const QSignalBlocker decBlocker(decimal_);
    const QSignalBlocker hexBlocker(hexadecimal_);
    decimal_->setChecked(fields.Base == "d");
    hexadecimal_->setChecked(fields.Base == "h");
}

bool ParameterWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == index_ && event->type() == QEvent::KeyPress) {
        return SwallowIndexKey(*static_cast<QKeyEvent*>(event), dialogs_,
                               [&](char32_t typed) { return presenter_.IndexKeyTyped(typed); });
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace velmora
