#include "mapping_window.h"

#include "dialog_support.h"
#include "presenters/mapping_editor.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolBar>

namespace velmora {

MappingWindow::MappingWindow(MappingEditor& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("mappingWindow");
    setWindowTitle(QString::fromStdString(presenter_.Title()));

    auto* toolBar = new QToolBar(this);
    toolBar->setObjectName("mappingToolbar");
    toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    QAction* saveAction =
        toolBar->addAction(QIcon(":/icons/save.svg"), ToQt(MappingEditorTexts::SaveButton));
    saveAction->setObjectName("saveMappingButton");
    QAction* discardAction = toolBar->addAction(QIcon(":/icons/tree-pdo-off.svg"), tr("Annulla"));
    discardAction->setObjectName("discardMappingButton");

    name_ = new QLineEdit(this);
    name_->setObjectName("name");
    objects_ = new QComboBox(this);
    objects_->setObjectName("objects");
    for (const std::string& item : presenter_.ObjectItems()) {
        objects_->addItem(QString::fromStdString(item));
    }
    index_ = new QLineEdit(this);
    index_->setObjectName("index");
    index_->installEventFilter(this);
    subIndex_ = new QLineEdit(this);
    subIndex_->setObjectName("subIndex");
    length_ = new QLineEdit(this);
    length_->setObjectName("length");
    number_ = new QLineEdit(QString::fromStdString(presenter_.MappingNumberText()), this);
    number_->setObjectName("mappingNumber");
    number_->setReadOnly(true);
    decimal_ = new QRadioButton(ToQt(MappingEditorTexts::Decimal), this);
    decimal_->setObjectName("decimal");
    hexadecimal_ = new QRadioButton(ToQt(MappingEditorTexts::Hexadecimal), this);
    hexadecimal_->setObjectName("hexadecimal");
    auto* baseGroup = new QButtonGroup(this);
    baseGroup->addButton(decimal_);
    baseGroup->addButton(hexadecimal_);
    auto* save = new QPushButton(ToQt(MappingEditorTexts::SaveButton), this);
    save->setObjectName("saveMapping");
    auto* discard = new QPushButton(tr("Annulla"), this);
    discard->setObjectName("discard");
    auto* help = new QPushButton(tr("Aiuto"), this);
    help->setObjectName("help");

    auto* form = new QFormLayout;
    auto row = [&](std::string_view text, QWidget* field) {
        auto* label = new QLabel(WithAccessKey(text), this);
        label->setBuddy(field);
        form->addRow(label, field);
    };
    row(MappingEditorTexts::NameLabel, name_);
    form->addRow(QString(), objects_);
    row(MappingEditorTexts::IndexLabel, index_);
    auto* base = new QHBoxLayout;
    base->addWidget(decimal_);
    base->addWidget(hexadecimal_);
    form->addRow(ToQt(MappingEditorTexts::BaseLabel), base);
    row(MappingEditorTexts::SubIndexLabel, subIndex_);
    row(MappingEditorTexts::LengthLabel, length_);
    row(MappingEditorTexts::NumberLabel, number_);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(discard);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(toolBar);
    layout->addLayout(form);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(objects_, &QComboBox::activated, this,
            [this](int item) { Forward([&] { presenter_.PickObject(item); }); });
    connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditName(text.toStdString()); });
    });
    connect(name_, &QLineEdit::returnPressed, this,
            [this] { Forward([&] { presenter_.EnterInName(); }); });
    connect(index_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditIndex(text.toStdString()); });
    });
    connect(subIndex_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditSubIndex(text.toStdString()); });
    });
    connect(length_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditLength(text.toStdString()); });
    });
    connect(decimal_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.ChooseBase("d"); }); });
    connect(hexadecimal_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.ChooseBase("h"); }); });
    connect(save, &QPushButton::clicked, this, [this] { Forward([&] { presenter_.Save(); }); });
    connect(discard, &QPushButton::clicked, this, &MappingWindow::reject);
    connect(help, &QPushButton::clicked, this,
            [this] { Forward([&] { presenter_.ShowHelp(); }); });
    connect(saveAction, &QAction::triggered, this,
            [this] { Forward([&] { presenter_.ClickToolbarButton(1); }); });
    connect(discardAction, &QAction::triggered, this,
            [this] { Forward([&] { presenter_.ClickToolbarButton(2); }); });
    Refresh();
}

template <typename Action> void MappingWindow::Forward(Action&& action) {
    RunShowingErrors(dialogs_, std::forward<Action>(action));
    Refresh();
    if (!presenter_.IsOpen() && isVisible()) {
        QDialog::accept();
    }
}

void MappingWindow::Refresh() {
    const MappingFields& fields = presenter_.Fields();
    ShowText(name_, fields.Name);
    ShowText(index_, fields.Index);
    ShowText(subIndex_, fields.SubIndex);
    ShowText(length_, fields.Length);
    {
        const QSignalBlocker blocker(objects_);
        objects_->setCurrentIndex(presenter_.SelectedObject());
    }
    const QSignalBlocker decBlocker(decimal_);
    const QSignalBlocker hexBlocker(hexadecimal_);
    decimal_->setChecked(presenter_.Base() == "d");
    hexadecimal_->setChecked(presenter_.Base() == "h");
    // A read-only object cannot be typed over.
    const bool writable = presenter_.PickedWritable();
    for (QLineEdit* field : {index_, subIndex_, length_}) {
        field->setReadOnly(!writable);
    }
}

void MappingWindow::reject() {
    Forward([&] {
        if (presenter_.IsOpen()) {
            presenter_.Discard();
        }
    });
    if (isVisible()) {
        QDialog::reject();
    }
}

bool MappingWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == index_ && event->type() == QEvent::KeyPress) {
        return SwallowIndexKey(*static_cast<QKeyEvent*>(event), dialogs_,
                               [&](char32_t typed) { return presenter_.TypeIndexKey(typed); });
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace velmora
