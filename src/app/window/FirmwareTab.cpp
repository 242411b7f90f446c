#include "FirmwareTab.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "Focus.h"
#include "Keys.h"
#include "LogField.h"
#include "Naming.h"
#include "SendButton.h"
#include "ValueLabel.h"

namespace {

QPushButton* button(const QString& caption, const QString& systemName, const QString& toolTip) {
    auto* result = named(new QPushButton(caption), systemName);
    result->setToolTip(toolTip);
    return result;
}

ValueLabel* versionLabel(const QString& text, const QString& systemName, const QString& name) {
    auto* label = named(new ValueLabel(name, text), systemName);
    QFont large = label->font();
    large.setBold(true);
    label->setFont(large);
    return label;
}

}  // namespace

FirmwareTab::FirmwareTab()
    : FolderPath(named(new QLineEdit, QStringLiteral("FolderPath"), tr("Local folder for firmware files"))),
      DefaultButton(button(QStringLiteral("Default"), QStringLiteral("DefaultButton"),
                           QStringLiteral("Choose default folder"))),
      BrowseButton(button(QStringLiteral("Browse"), QStringLiteral("BrowseButton"),
                          QStringLiteral("Browse for a different firmware folder"))),
      GetRevButton(button(
          QStringLiteral("Check Versions Now"), QStringLiteral("GetRevButton"),
          QStringLiteral("Compare version installed in VLX with available versions in firmware folder"))),
      GetRevButton1(button(QStringLiteral("Copy New Files from Tessarin"), QStringLiteral("GetRevButton1"),
                           QStringLiteral("Get new firmware from Tessarin file server"))),
      m_copyMenu(named(new QMenu(this), QStringLiteral("CopyMenu"), tr("Ways to copy new files"))),
      MCUinstalled(versionLabel(QStringLiteral("---"), QStringLiteral("MCUinstalledText"),
                                tr("Firmware version installed in VLX"))),
      MCUavailable(versionLabel(QStringLiteral("missing"), QStringLiteral("MCUavailableText"),
                                tr("Firmware version available"))),
      ImagesButton(
          named(new QToolButton, QStringLiteral("ImagesButton"), tr("Images in the firmware folder"))),
      m_imagesMenu(named(new QMenu(this), QStringLiteral("ImagesMenu"), tr("Images in the firmware folder"))),
      SendVLXButton(
          named(new SendButton(QStringLiteral("Send Firmware to VLX720")), QStringLiteral("SendVLXButton"))),
      StatusField(named(new LogField(LogField::SelectAll::NeedsSelection), QStringLiteral("StatusField"),
                        tr("Activity log"))) {
    FolderPath->setReadOnly(true);
    FolderPath->installEventFilter(this);
    SendVLXButton->setToolTip(tr("Load the available firmware into the amplifier"));
    makeCopyMenu();
    makeImagesButton();
    setSendVLXButtonEnabled(false);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(folderGroup());
    auto* middle = new QHBoxLayout;
    middle->addWidget(checkGroup(), 1);
    middle->addWidget(versionGroup(), 1);
    rows->addLayout(middle);
    rows->addWidget(logGroup(), 1);

    connect(DefaultButton, &QPushButton::clicked, this, &FirmwareTab::DefaultButton_Action);
    connect(BrowseButton, &QPushButton::clicked, this, &FirmwareTab::BrowseButton_Action);
    connect(GetRevButton, &QPushButton::clicked, this, &FirmwareTab::GetRevButton_Action);
    connect(GetRevButton1, &QPushButton::clicked, this, &FirmwareTab::GetRevButton1_Action);
    connect(SendVLXButton, &QPushButton::clicked, this, &FirmwareTab::SendVLXButton_Action);
    connect(StatusField, &LogField::textChanged, this, &FirmwareTab::StatusField_TextChange);
}

void FirmwareTab::makeCopyMenu() {
    CopyWithCurl = m_copyMenu->addAction(QStringLiteral("Copy with curl"));
    CopyWithCurl->setObjectName(QStringLiteral("CopyWithCurl"));
    GiveUpCopying = m_copyMenu->addAction(tr("Give Up Copying"));
    GiveUpCopying->setObjectName(QStringLiteral("GiveUpCopying"));
    GiveUpCopying->setShortcut(Qt::Key_Escape);
    GiveUpCopying->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    // The shortcut holds on the whole tab: the button itself may be disabled meanwhile.
    addAction(GiveUpCopying);
    setCanGiveUp(false);
    connect(CopyWithCurl, &QAction::triggered, this, &FirmwareTab::CopyWithCurl_Action);
    connect(GiveUpCopying, &QAction::triggered, this, &FirmwareTab::GiveUpCopying_Action);
}

void FirmwareTab::makeImagesButton() {
    ImagesButton->setText(tr("Images"));
    ImagesButton->setArrowType(Qt::DownArrow);
    ImagesButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    ImagesButton->setFocusPolicy(Qt::StrongFocus);
    ImagesButton->setToolTip(tr("Choose another image of the firmware folder, and send that one"));
    connect(ImagesButton, &QToolButton::clicked, this, &FirmwareTab::ImagesButton_Action);
    connect(m_imagesMenu, &QMenu::triggered, this,
            [this](const QAction* image) { Q_EMIT imageChosen(image->data().toString()); });
}

// No row is marked at first: a key pressed twice must not send anything.
void FirmwareTab::offerImages(const QStringList& names) {
    m_imagesMenu->clear();
    for (const QString& name : names)
        m_imagesMenu->addAction(QString(name).replace(u'&', QStringLiteral("&&")))->setData(name);
    if (names.isEmpty())
        m_imagesMenu->addAction(tr("No image in the folder"))->setEnabled(false);
    m_imagesMenu->popup(ImagesButton->mapToGlobal(QPoint(0, ImagesButton->height())));
}

// A disabled button leaves the event to its parents.
void FirmwareTab::contextMenuEvent(QContextMenuEvent* event) {
    const QRect place(GetRevButton1->mapTo(this, QPoint()), GetRevButton1->size());
    if (!place.contains(event->pos())) {
        QWidget::contextMenuEvent(event);
        return;
    }
    CopyWithCurl->setEnabled(GetRevButton1->isEnabled());
    m_copyMenu->popup(event->globalPos());
}

QWidget* FirmwareTab::lockable(std::initializer_list<QWidget*> buttons, Qt::Orientation direction) {
    auto* group = new QWidget;
    auto* box = new QBoxLayout(
        direction == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, group);
    box->setContentsMargins(0, 0, 0, 0);
    for (QWidget* button : buttons)
        box->addWidget(button);
    m_lockable.push_back(group);
    return group;
}

void FirmwareTab::lock(bool isLocked) {
    for (QWidget* group : m_lockable)
        setEnabledOnPage(*group, !isLocked, *StatusField);
}

QWidget* FirmwareTab::folderGroup() {
    auto* group = new QGroupBox(QStringLiteral("Folder Location"));
    auto* label = new QLabel(QStringLiteral("Local folder for firmware files:"));
    label->setBuddy(FolderPath);
    auto* grid = new QGridLayout(group);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(FolderPath, 1, 0);
    grid->addWidget(lockable({DefaultButton, BrowseButton}, Qt::Horizontal), 1, 1);
    grid->setColumnStretch(0, 1);
    return group;
}

QWidget* FirmwareTab::checkGroup() {
    auto* group = named(new QGroupBox(QStringLiteral("Check for New Files")),
                        QStringLiteral("CheckNewFilesGroup"), tr("Check for new files"));
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(lockable({GetRevButton, GetRevButton1}, Qt::Vertical));
    rows->addStretch();
    return group;
}

QWidget* FirmwareTab::versionGroup() {
    auto* group = new QGroupBox(QStringLiteral("Firmware Version"));
    auto* grid = new QGridLayout(group);
    grid->addWidget(new QLabel(QStringLiteral("Installed in VLX")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Available")), 0, 1);
    grid->addWidget(MCUinstalled, 1, 0);
    grid->addWidget(MCUavailable, 1, 1);
    grid->addWidget(lockable({ImagesButton}, Qt::Vertical), 0, 2, 2, 1);
    grid->addWidget(lockable({SendVLXButton}, Qt::Vertical), 2, 0, 1, 3);
    return group;
}

QWidget* FirmwareTab::logGroup() {
    auto* group = new QGroupBox(QStringLiteral("Activity Log"));
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(StatusField);
    return group;
}

QString FirmwareTab::MCUinstalledText() const {
    return MCUinstalled->text();
}

void FirmwareTab::setMCUinstalledText(const QString& text) {
    MCUinstalled->setValue(text);
}

QString FirmwareTab::MCUavailableText() const {
    return MCUavailable->text();
}

void FirmwareTab::setMCUavailableText(const QString& text) {
    MCUavailable->setValue(text);
}

void FirmwareTab::setFolderPath(const QString& path) {
    FolderPath->setText(path);
}

void FirmwareTab::setSendVLXButtonEnabled(bool enabled) {
    setEnabledOnPage(*SendVLXButton, enabled, *StatusField);
    setEnabledOnPage(*ImagesButton, enabled, *StatusField);
}

void FirmwareTab::setGetRevButtonEnabled(bool enabled) {
    setEnabledOnPage(*GetRevButton, enabled, *StatusField);
}

void FirmwareTab::setGetRevButton1Enabled(bool enabled) {
    GetRevButton1->setEnabled(enabled);
}

void FirmwareTab::setCanGiveUp(bool canGiveUp) {
    GiveUpCopying->setEnabled(canGiveUp);
}

void FirmwareTab::moveStatusFieldToEnd() {
    StatusField_TextChange();
}

bool FirmwareTab::eventFilter(QObject* watched, QEvent* event) {
    // FolderPath would take the keys for itself.
    if (event->type() == QEvent::KeyPress && Event_KeyDown(*static_cast<const QKeyEvent*>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool FirmwareTab::Event_KeyDown(const QKeyEvent& event) {
    if (!isShortcut(event))
        return false;
    if (event.key() == Qt::Key_A) {
        StatusField->selectAll();
        return true;
    }
    const bool hasSelection = StatusField->hasSelection();
    if (event.key() == Qt::Key_C)
        StatusField->copySelection();
    else if (event.key() == Qt::Key_X)
        StatusField->cutSelection();
    else
        return false;
    return hasSelection;
}

// The insertion point stays at the end, so that the log scrolls along.
void FirmwareTab::StatusField_TextChange() {
    if (!StatusField->isSelecting())
        StatusField->moveCursor(QTextCursor::End);
}
