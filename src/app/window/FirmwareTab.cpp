#include "FirmwareTab.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "LogField.h"
#include "Naming.h"

namespace {

QPushButton* button(const QString& caption, const QString& systemName, const QString& toolTip) {
    auto* result = named(new QPushButton(caption), systemName, caption);
    result->setToolTip(toolTip);
    return result;
}

QLabel* versionLabel(const QString& text, const QString& systemName, const QString& accessibleName) {
    auto* label = named(new QLabel(text), systemName, accessibleName);
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
      MCUinstalled(versionLabel(QStringLiteral("---"), QStringLiteral("MCUinstalledText"),
                                tr("Firmware version installed in VLX"))),
      MCUavailable(versionLabel(QStringLiteral("missing"), QStringLiteral("MCUavailableText"),
                                tr("Firmware version available"))),
      SendVLXButton(button(QStringLiteral("Send Firmware to VLX720"), QStringLiteral("SendVLXButton"),
                           tr("Load the available firmware into the amplifier"))),
      StatusField(named(new LogField(LogField::SelectAll::NeedsSelection), QStringLiteral("StatusField"),
                        tr("Activity log"))) {
    FolderPath->setReadOnly(true);
    FolderPath->installEventFilter(this);
    SendVLXButton->setEnabled(false);

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
    connect(SendVLXButton, &QPushButton::clicked, this, &FirmwareTab::SendVLXButton_Action);
    connect(StatusField, &LogField::textChanged, this, &FirmwareTab::StatusField_TextChange);
}

QWidget* FirmwareTab::folderGroup() {
    auto* group = new QGroupBox(QStringLiteral("Folder Location"));
    auto* label = new QLabel(QStringLiteral("Local folder for firmware files:"));
    label->setBuddy(FolderPath);
    auto* grid = new QGridLayout(group);
    grid->addWidget(label, 0, 0, 1, 3);
    grid->addWidget(FolderPath, 1, 0);
    grid->addWidget(DefaultButton, 1, 1);
    grid->addWidget(BrowseButton, 1, 2);
    grid->setColumnStretch(0, 1);
    return group;
}

QWidget* FirmwareTab::checkGroup() {
    auto* group = named(new QGroupBox(QStringLiteral("Check for New Files")),
                        QStringLiteral("CheckNewFilesGroup"), tr("Check for new files"));
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(GetRevButton);
    rows->addWidget(GetRevButton1);
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
    grid->addWidget(SendVLXButton, 2, 0, 1, 2);
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
    MCUinstalled->setText(text);
}

QString FirmwareTab::MCUavailableText() const {
    return MCUavailable->text();
}

void FirmwareTab::setMCUavailableText(const QString& text) {
    MCUavailable->setText(text);
}

void FirmwareTab::setFolderPath(const QString& path) {
    FolderPath->setText(path);
}

void FirmwareTab::setSendVLXButtonEnabled(bool enabled) {
    SendVLXButton->setEnabled(enabled);
}

void FirmwareTab::setGetRevButtonEnabled(bool enabled) {
    GetRevButton->setEnabled(enabled);
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
    if (event.modifiers() != Qt::ControlModifier)
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
    StatusField->moveCursor(QTextCursor::End);
}
