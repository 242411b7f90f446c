#include "PortTab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Naming.h"

PortTab::PortTab()
    : SerialPortMenu(named(new QComboBox, QStringLiteral("SerialPortMenu"), tr("Serial port"))),
      RefreshPortsButton(named(new QPushButton(QStringLiteral("Refresh Port List")),
                               QStringLiteral("RefreshPortsButton"), tr("Refresh port list"))),
      PortCheck(
          named(new QCheckBox(tr("Use port by name:")), QStringLiteral("PortCheck"), tr("Use port by name"))),
      PortField(
          named(new QLineEdit(QStringLiteral("/dev/ttyUSB0")), QStringLiteral("PortField"), tr("Port name"))),
      TestCommButtton(named(new QPushButton(QStringLiteral("Test Communications")),
                            QStringLiteral("TestCommButtton"), tr("Test communications"))) {
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
    connect(TestCommButtton, &QPushButton::clicked, this, &PortTab::TestCommButtton_Action);
}

void PortTab::setSerialPortMenuRows(const QStringList& names) {
    SerialPortMenu->clear();
    SerialPortMenu->addItems(names);
    m_isChangeTold = false;
}

void PortTab::setSerialPortMenuIndex(int index) {
    SerialPortMenu->setCurrentIndex(index < SerialPortMenu->count() ? index : -1);
    m_isChangeTold = false;
}

bool PortTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut)
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
