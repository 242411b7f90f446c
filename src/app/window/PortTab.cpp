#include "PortTab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Naming.h"

namespace {

// A context menu or another window takes the keyboard for a while only.
bool isLeaving(const QEvent& event) {
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
}

}  // namespace

PortTab::PortTab()
    : SerialPortMenu(named(new QComboBox, QStringLiteral("SerialPortMenu"), tr("Serial port"))),
      RefreshPortsButton(
          named(new QPushButton(QStringLiteral("Refresh Port List")), QStringLiteral("RefreshPortsButton"))),
      PortCheck(named(new QCheckBox(tr("Use port by name:")), QStringLiteral("PortCheck"))),
      PortField(
          named(new QLineEdit(QStringLiteral("/dev/ttyUSB0")), QStringLiteral("PortField"), tr("Port name"))),
      TestCommButtton(
          named(new QPushButton(QStringLiteral("Test Communications")), QStringLiteral("TestCommButtton"))) {
    SerialPortMenu->setToolTip(QStringLiteral("Choose port connected to the VLX"));
    RefreshPortsButton->setToolTip(
        QStringLiteral("Refresh available port list after plugging in a USB to Serial Adapter"));
    TestCommButtton->setToolTip(QStringLiteral("Reopen port and determine VLX RS-232 speed"));
    auto* label = new QLabel(QStringLiteral("Choose Serial Port connected to VLX720:"));
    label->setBuddy(SerialPortMenu);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(24, 24, 24, 24);
    grid->setVerticalSpacing(14);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(SerialPortMenu, 1, 0);
    grid->addWidget(RefreshPortsButton, 1, 1);
    grid->addWidget(PortCheck, 2, 0, 1, 2);
    grid->addWidget(PortField, 3, 0, 1, 2);
    grid->addWidget(TestCommButtton, 4, 0, Qt::AlignLeft);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(5, 1);
    showByNamePort(false);

    connect(SerialPortMenu, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_isChangeTold = true;
        Q_EMIT SerialPortMenu_Change(index);
    });
    connect(SerialPortMenu, &QComboBox::activated, this, [this](int index) {
        if (!std::exchange(m_isChangeTold, false))
            Q_EMIT serialPortMenuChosenAgain(index);
    });
    connect(RefreshPortsButton, &QPushButton::clicked, this, &PortTab::RefreshPortsButton_Action);
    connect(PortCheck, &QCheckBox::toggled, this, &PortTab::PortCheck_Action);
    connect(PortField, &QLineEdit::textChanged, this, &PortTab::PortField_TextChange);
    // Return is the end of an entry too, where the name is in use.
    connect(PortField, &QLineEdit::returnPressed, this, [this] {
        if (PortCheck->isChecked())
            Q_EMIT PortField_LostFocus();
    });
    PortField->installEventFilter(this);
    SerialPortMenu->installEventFilter(this);
    connect(TestCommButtton, &QPushButton::clicked, this, &PortTab::TestCommButtton_Action);
}

void PortTab::setSerialPortMenuRows(const QStringList& names) {
    // Rows that change under the pointer would be chosen wrongly.
    SerialPortMenu->hidePopup();
    SerialPortMenu->clear();
    SerialPortMenu->addItems(names);
    m_isChangeTold = false;
}

void PortTab::setSerialPortMenuIndex(int index) {
    SerialPortMenu->setCurrentIndex(index < SerialPortMenu->count() ? index : -1);
    m_isChangeTold = false;
}

bool PortTab::eventFilter(QObject* watched, QEvent* event) {
    // Rolled over by the mouse wheel on its way, the list must not choose another port.
    if (watched == SerialPortMenu && event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    if (watched == PortField && event->type() == QEvent::FocusOut && isLeaving(*event))
        Q_EMIT PortField_LostFocus();
    return QWidget::eventFilter(watched, event);
}

QString PortTab::serialPortMenuText() const {
    return SerialPortMenu->currentText();
}

int PortTab::serialPortMenuIndex() const {
    return SerialPortMenu->currentIndex();
}

QString PortTab::portFieldText() const {
    return PortField->text();
}

void PortTab::showByNamePort(bool shown) {
    PortCheck->setVisible(shown);
    PortField->setVisible(shown);
}
