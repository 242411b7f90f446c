#include "BannerWindow.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Naming.h"
#include "ProgressWheel.h"

BannerWindow::BannerWindow(Clock& clock, Dialogs& dialogs, Flows::ErrorHandler onError, PowerOnBanner& banner,
                           QWidget& mainWindow)
    : QDialog(&mainWindow),
      m_dialogs(dialogs),
      m_banner(banner),
      m_closed(clock),
      EditField1(named(new QLineEdit, QStringLiteral("EditField1"), QStringLiteral("Power on banner text"))),
      ProgressWheel1(named(new ProgressWheel, QStringLiteral("ProgressWheel1"),
                           QStringLiteral("Reading the banner from the amplifier"))),
      BevelButton1(named(new QPushButton(QStringLiteral("Save")), QStringLiteral("BevelButton1"),
                         QStringLiteral("Save the banner to the amplifier"))),
      BevelButton2(named(new QPushButton(QStringLiteral("Cancel")), QStringLiteral("BevelButton2"),
                         QStringLiteral("Close without saving"))),
      m_flows(clock, std::move(onError)) {
    setObjectName(QStringLiteral("BannerWindow"));
    setWindowTitle(QStringLiteral("VLX Power On Banner"));
    // Not to the whole program: the trends and the manual stay in reach.
    setWindowModality(Qt::WindowModal);
    layOut();
    EditField1->setMaxLength(PowerOnBanner::MaximumLength);
    EditField1->setValidator(&m_validator);
    EditField1->hide();
    BevelButton1->setAutoDefault(false);
    BevelButton1->setEnabled(false);
    connect(BevelButton1, &QPushButton::clicked, this, &BannerWindow::BevelButton1_Action);
    connect(BevelButton2, &QPushButton::clicked, this, &BannerWindow::BevelButton2_Action);
}

void BannerWindow::layOut() {
    auto* const StaticText1 =
        named(new QLabel(QStringLiteral("Enter Power On Banner Text")), QStringLiteral("StaticText1"),
              QStringLiteral("Enter power on banner text"));
    auto* const StaticText2 = named(new QLabel(QStringLiteral("Maximum of 8 characters")),
                                    QStringLiteral("StaticText2"), QStringLiteral("Maximum of 8 characters"));
    StaticText1->setBuddy(EditField1);
    auto* const GroupBox1 =
        named(new QGroupBox, QStringLiteral("GroupBox1"), QStringLiteral("Power on banner"));
    auto* const group = new QVBoxLayout(GroupBox1);
    group->addWidget(StaticText1);
    group->addWidget(EditField1);
    group->addWidget(ProgressWheel1, 0, Qt::AlignHCenter);
    group->addWidget(StaticText2);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(BevelButton1);
    buttons->addWidget(BevelButton2);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(GroupBox1);
    rows->addStretch();
    rows->addLayout(buttons);
}

Task<> BannerWindow::Run() {
    show();
    m_flows.start(read());
    co_await m_closed.wait();
}

Task<> BannerWindow::read() {
    const std::optional<QString> text = co_await m_banner.ReadPowerOnBanner();
    strOriginalText = text.value_or(QString());
    m_validator.setOriginalText(strOriginalText);
    EditField1->setText(strOriginalText);
    EditField1->show();
    EditField1->setFocus();
    EditField1->selectAll();
    ProgressWheel1->hide();
    BevelButton1->setEnabled(true);
    // Saved by a mere Return, the empty field of a failed read would wipe the banner.
    (text ? BevelButton1 : BevelButton2)->setDefault(true);
}

Task<> BannerWindow::write() {
    setWriting(true);
    const bool ok = co_await m_banner.WritePowerOnBanner(EditField1->text());
    setWriting(false);
    if (ok) {
        close();
        co_return;
    }
    // Disabled in between, the field has lost it.
    EditField1->setFocus();
    co_await m_dialogs.MsgBox(QStringLiteral("Unable to write to VLX"));
}

void BannerWindow::setWriting(bool isWriting) {
    m_isWriting = isWriting;
    for (QWidget* const control : {static_cast<QWidget*>(EditField1), static_cast<QWidget*>(BevelButton1),
                                   static_cast<QWidget*>(BevelButton2)})
        control->setEnabled(!isWriting);
}

void BannerWindow::BevelButton1_Action() {
    m_flows.start(write());
}

void BannerWindow::BevelButton2_Action() {
    close();
}

// Every way of closing comes through here: the buttons, the close box, Escape.
void BannerWindow::done(int result) {
    if (m_isWriting)
        return;
    QDialog::done(result);
    m_closed.open();
}
