#include "pdo_window.h"

#include "dialog_support.h"
#include "mapping_window.h"
#include "pdo/mode_choice.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolBar>
#include <QTreeWidget>

namespace velmora {

namespace {

constexpr PdoCommand kCommands[] = {PdoCommand::Save,          PdoCommand::Cancel,
                                    PdoCommand::ClearMappings, PdoCommand::AddMapping,
                                    PdoCommand::RemoveMapping, PdoCommand::ModifyMapping};
constexpr const char* kCommandNames[] = {"savePdo",    "cancelPdo",     "clearMappings",
                                         "addMapping", "removeMapping", "modifyMapping"};
constexpr const char* kSwitchNames[] = {"cobIdSwitch", "commSwitch", "inhibitSwitch",
                                        "eventSwitch", "rtrSwitch"};

// Enabled fields are white, greyed ones take the palette's disabled background.
void ShowField(QLineEdit* field, const std::string& text, bool enabled) {
    const QSignalBlocker blocker(field);
    const QString shown = QString::fromStdString(text);
    if (field->text() != shown) {
        field->setText(shown);
    }
    field->setEnabled(enabled);
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, enabled
                                         ? QColor(Qt::white)
                                         : palette.color(QPalette::Disabled, QPalette::Window));
    field->setPalette(palette);
}

// Focus that moves to another control of the dialog, not to another window or a popup.
bool LeavesField(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

} // namespace

PdoWindow::PdoWindow(PdoEditor& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("pdoWindow");
    setWindowTitle(ToQt(presenter_.Title()));

    // Commands: toolbar buttons and menu entries, separate actions with separate states.
    auto* menuBar = new QMenuBar(this);
    QMenu* pdoMenu = menuBar->addMenu(ToQt(PdoEditorTexts::PdoMenu));
    QMenu* mappingMenu = menuBar->addMenu(ToQt(PdoEditorTexts::MappingMenu));
    mappingMenu_ = mappingMenu->menuAction();
    auto* toolBar = new QToolBar(this);
    toolBar->setObjectName("pdoToolbar");
    toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    // The project's icons: save, the PDO's edits dropped, an empty mapping list, a mapping
    // added, removed, changed.
    const char* const icons[] = {"save",         "tree-pdo-off", "new",
                                 "tree-mapping", "remove-node",  "edit-node"};
    for (std::size_t i = 0; i < std::size(kCommands); ++i) {
        const PdoCommand command = kCommands[i];
        const PdoCommandText text = TextOf(command);
        QString caption = ToQt(text.MenuEntry);
        QMenu* menu = i < 2 ? pdoMenu : mappingMenu;
        menuEntries_[i] = menu->addAction(caption, this, [this, command] { RunCommand(command); });
        menuEntries_[i]->setObjectName(QString(kCommandNames[i]) + "Menu");
        buttons_[i] =
            toolBar->addAction(QIcon(QString(":/icons/%1.svg").arg(icons[i])), caption.remove('&'),
                               this, [this, command] { RunCommand(command); });
        buttons_[i]->setObjectName(kCommandNames[i]);
        buttons_[i]->setToolTip(ToQt(text.ToolTip));
    }

    auto* pdoHeader = new QLabel(ToQt(PdoEditorTexts::PdoHeader) +
                                     QString::fromStdString(presenter_.PdoDescription()),
                                 this);
    pdoHeader->setObjectName("pdoHeader");
    auto* productHeader = new QLabel(ToQt(PdoEditorTexts::ProductHeader) + " " +
                                         QString::fromStdString(presenter_.ProductDescription()),
                                     this);
    productHeader->setObjectName("productHeader");

    mode_ = new QComboBox(this);
    mode_->setObjectName("mode");
    for (std::string_view choice : kModeChoices) {
        mode_->addItem(ToQt(choice));
    }
    cobId_ = new QLineEdit(this);
    cobId_->setObjectName("cobId");
    cobId_->installEventFilter(this);
    hexBase_ = new QRadioButton(ToQt(PdoEditorTexts::Hexadecimal), this);
    hexBase_->setObjectName("hexBase");
    decBase_ = new QRadioButton(ToQt(PdoEditorTexts::Decimal), this);
    decBase_->setObjectName("decBase");
    auto* baseGroup = new QButtonGroup(this);
    baseGroup->addButton(hexBase_);
    baseGroup->addButton(decBase_);
    bytes_ = new QComboBox(this);
    bytes_->setObjectName("bytes");
    for (const std::string& choice : PdoEditor::BytesChoices()) {
        bytes_->addItem(QString::fromStdString(choice));
    }
    comm_ = new QLineEdit(this);
    comm_->setObjectName("comm");
    inhibit_ = new QLineEdit(this);
    inhibit_->setObjectName("inhibitTime");
    event_ = new QLineEdit(this);
    event_->setObjectName("eventTime");
    for (std::size_t i = 0; i < switches_.size(); ++i) {
        switches_[i] = new QCheckBox(this);
        switches_[i]->setObjectName(kSwitchNames[i]);
    }
    switches_[static_cast<std::size_t>(PdoSwitch::Rtr)]->setText(ToQt(PdoEditorTexts::RtrLabel));
    tree_ = new QTreeWidget(this);
    tree_->setObjectName("mappings");
    tree_->setHeaderHidden(true);
    // Room for "[6061 sub 0] modes of operation display (8 bit)"; a longer item scrolls.
    tree_->setMinimumWidth(tree_->fontMetrics().horizontalAdvance(QString(52, 'x')));
    tree_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree_->header()->setStretchLastSection(false);
    mappingCount_ = new QLabel(this);
    mappingCount_->setObjectName("mappingCount");

    auto label = [this](std::string_view text, QWidget* buddy) {
        auto* shown = new QLabel(WithAccessKey(text), this);
        shown->setBuddy(buddy);
        return shown;
    };
    auto* fields = new QGridLayout;
    int row = 0;
    fields->addWidget(label(PdoEditorTexts::ModeLabel, mode_), row, 0);
    fields->addWidget(mode_, row++, 2);
    fields->addWidget(label(PdoEditorTexts::CobIdLabel, cobId_), row, 0);
    fields->addWidget(switches_[0], row, 1);
    fields->addWidget(cobId_, row++, 2);
    auto* base = new QHBoxLayout;
    base->addWidget(new QLabel(ToQt(PdoEditorTexts::BaseLabel), this));
    base->addWidget(hexBase_);
    base->addWidget(decBase_);
    fields->addLayout(base, row++, 2);
    fields->addWidget(label(PdoEditorTexts::BytesLabel, bytes_), row, 0);
    fields->addWidget(bytes_, row++, 2);
    const std::pair<std::string_view, QLineEdit*> texts[] = {
        {PdoEditorTexts::CommLabel, comm_},
        {PdoEditorTexts::InhibitLabel, inhibit_},
        {PdoEditorTexts::EventLabel, event_},
    };
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        fields->addWidget(label(texts[i].first, texts[i].second), row, 0);
        fields->addWidget(switches_[i + 1], row, 1);
        fields->addWidget(texts[i].second, row++, 2);
    }
    fields->addWidget(switches_[static_cast<std::size_t>(PdoSwitch::Rtr)], row++, 1, 1, 2);

    auto* mappingColumn = new QVBoxLayout;
    mappingColumn->addWidget(tree_);
    mappingColumn->addWidget(mappingCount_);
    auto* body = new QHBoxLayout;
    body->addLayout(fields);
    body->addLayout(mappingColumn, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menuBar);
    layout->addWidget(toolBar);
    layout->addWidget(pdoHeader);
    layout->addWidget(productHeader);
    layout->addLayout(body);
    QWidget* const order[] = {mode_,        switches_[0], cobId_,       hexBase_,     decBase_,
                              bytes_,       switches_[1], comm_,        switches_[2], inhibit_,
                              switches_[3], event_,       switches_[4], tree_};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }

    connect(mode_, &QComboBox::activated, this, [this](int item) {
        Forward([&] { presenter_.ChooseMode(mode_->itemText(item).toStdString()); });
    });
    for (std::size_t i = 0; i < switches_.size(); ++i) {
        connect(switches_[i], &QCheckBox::clicked, this, [this, i](bool on) {
            Forward([&] { presenter_.SetSwitch(static_cast<PdoSwitch>(i), on); });
        });
    }
    connect(cobId_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditCobIdText(text.toStdString()); });
    });
    connect(hexBase_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.ChooseCobIdBase("h"); }); });
    connect(decBase_, &QRadioButton::clicked, this,
            [this] { Forward([&] { presenter_.ChooseCobIdBase("d"); }); });
    connect(bytes_, &QComboBox::activated, this, [this](int item) {
        Forward([&] { presenter_.ChooseBytes(bytes_->itemText(item).toStdString()); });
    });
    connect(comm_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditComm(text.toStdString()); });
    });
    connect(inhibit_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditInhibitTime(text.toStdString()); });
    });
    connect(event_, &QLineEdit::textEdited, this, [this](const QString& text) {
        Forward([&] { presenter_.EditEventTime(text.toStdString()); });
    });
    connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this] {
        const int item = SelectedMappingItem();
        MappingEditor* editor = nullptr;
        Forward([&] { editor = presenter_.ActivateMappingItem(item); });
        OpenMappingEditor(editor);
    });

    ClearAutoDefault(this);
    Refresh();
}

template <typename Action> void PdoWindow::Forward(Action&& action) {
    RunShowingErrors(dialogs_, std::forward<Action>(action));
    Refresh();
    if (!presenter_.IsOpen() && isVisible()) {
        QDialog::accept();
    }
}

void PdoWindow::Refresh() {
    {
        const QSignalBlocker blocker(mode_);
        const QString mode = QString::fromStdString(presenter_.ModeText());
        const int item = mode_->findText(mode);
        if (item < 0) {
            // A stored text that is not a choice ("Manual") shows as it stands.
            mode_->addItem(mode);
            mode_->setCurrentIndex(mode_->count() - 1);
        } else {
            mode_->setCurrentIndex(item);
        }
    }
    for (std::size_t i = 0; i < switches_.size(); ++i) {
        const QSignalBlocker blocker(switches_[i]);
        const auto which = static_cast<PdoSwitch>(i);
        switches_[i]->setChecked(presenter_.SwitchOn(which));
        switches_[i]->setEnabled(presenter_.SwitchEnabled(which));
    }
    ShowField(cobId_, presenter_.CobIdText(), presenter_.CobIdFieldEnabled());
    {
        const QSignalBlocker hexBlocker(hexBase_);
        const QSignalBlocker decBlocker(decBase_);
        hexBase_->setChecked(presenter_.CobIdBase() == "h");
        decBase_->setChecked(presenter_.CobIdBase() == "d");
        hexBase_->setEnabled(presenter_.CobIdFieldEnabled());
        decBase_->setEnabled(presenter_.CobIdFieldEnabled());
    }
    {
        const QSignalBlocker blocker(bytes_);
        bytes_->setCurrentIndex(bytes_->findText(QString::fromStdString(presenter_.BytesText())));
        bytes_->setEnabled(presenter_.BytesEnabled());
    }
    ShowField(comm_, presenter_.CommText(), presenter_.CommFieldEnabled());
    ShowField(inhibit_, presenter_.InhibitTimeText(), presenter_.InhibitTimeFieldEnabled());
    ShowField(event_, presenter_.EventTimeText(), presenter_.EventTimeFieldEnabled());

    const int selected = SelectedMappingItem();
    tree_->clear();
    const std::vector<std::string> items = presenter_.MappingTree();
    if (!items.empty()) {
        auto* root = new QTreeWidgetItem(tree_, {QString::fromStdString(items[0])});
        for (std::size_t i = 1; i < items.size(); ++i) {
            new QTreeWidgetItem(root, {QString::fromStdString(items[i])});
        }
        root->setExpanded(true);
        if (selected > 0 && selected < static_cast<int>(items.size())) {
            tree_->setCurrentItem(root->child(selected - 1));
        }
    }
    mappingCount_->setText(QString::fromStdString(presenter_.MappingCountText()));

    for (std::size_t i = 0; i < std::size(kCommands); ++i) {
        buttons_[i]->setEnabled(presenter_.ButtonEnabled(kCommands[i]));
        menuEntries_[i]->setEnabled(presenter_.MenuEntryEnabled(kCommands[i]));
    }
    mappingMenu_->setEnabled(presenter_.MappingMenuEnabled());
}

int PdoWindow::SelectedMappingItem() const {
    QTreeWidgetItem* item = tree_->currentItem();
    if (item == nullptr) {
        return -1;
    }
    // The root is item 0, its children follow in order.
    return item->parent() == nullptr ? 0 : item->parent()->indexOfChild(item) + 1;
}

void PdoWindow::RunCommand(PdoCommand command) {
    MappingEditor* editor = nullptr;
    const int item = SelectedMappingItem();
    Forward([&] {
        switch (command) {
        case PdoCommand::Save: {
            const PdoSaveResult saved = presenter_.Save();
            saveResult_ = saved;
            break;
        }
        case PdoCommand::Cancel:
            presenter_.Cancel();
            break;
        case PdoCommand::ClearMappings:
            presenter_.ClearMappings();
            break;
        case PdoCommand::AddMapping:
            editor = presenter_.AddMapping();
            break;
        case PdoCommand::RemoveMapping:
            presenter_.RemoveMapping(item);
            break;
        case PdoCommand::ModifyMapping:
            editor = presenter_.ModifyMapping(item);
            break;
        }
    });
    OpenMappingEditor(editor);
}

void PdoWindow::OpenMappingEditor(MappingEditor* editor) {
    if (editor == nullptr) {
        return;
    }
    {
        MappingWindow window(*editor, dialogs_, this);
        setEnabled(false);
        EnableOverParent(window);
        window.exec();
        setEnabled(true);
    }
    Refresh();
}

void PdoWindow::reject() {
    Forward([&] {
        if (presenter_.IsOpen()) {
            presenter_.Cancel();
        }
    });
    if (isVisible()) {
        QDialog::reject();
    }
}

void PdoWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        const Qt::KeyboardModifiers mods = event->modifiers();
        Forward([&] {
            presenter_.PressHelpKey(mods & Qt::ShiftModifier, mods & Qt::ControlModifier,
                                    mods & Qt::AltModifier);
        });
        return;
    }
    QDialog::keyPressEvent(event);
}

bool PdoWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == cobId_ && event->type() == QEvent::KeyPress) {
        // Backspace goes through the COB-ID filter too, which discards it.
        const auto typed = FilteredKey(*static_cast<QKeyEvent*>(event), true);
        if (!typed) {
            return false; // arrows, Tab, Delete: the field's own
        }
        const char32_t accepted = presenter_.TypeCobIdKey(*typed);
        if (accepted == 0) {
            return true; // discarded
        }
        if (accepted != typed) {
            cobId_->insert(QString(QChar(static_cast<char16_t>(accepted))));
            Forward([&] { presenter_.EditCobIdText(cobId_->text().toStdString()); });
            return true;
        }
        return false;
    }
    if (watched == cobId_ && event->type() == QEvent::FocusOut && !leavingCobId_ &&
        presenter_.IsOpen() && LeavesField(static_cast<QFocusEvent*>(event)->reason())) {
        leavingCobId_ = true;
        Forward([&] {
            const PdoSaveResult result = presenter_.LeaveCobIdField();
            if (result.Saved) {
                saveResult_ = result;
            }
        });
        leavingCobId_ = false;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace velmora
