#include "MessageWindow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Naming.h"

namespace {

constexpr QSize DesignSize(333, 120);
constexpr QMargins Margins(14, 12, 20, 12);
constexpr QSize NotesButton(163, 22);
constexpr QSize CloseButton(69, 22);

}  // namespace

MessageWindow::MessageWindow(Clock& clock, Globals& globals, Flows::ErrorHandler onError, Notes showNotes,
                             QWidget& mainWindow)
    : QDialog(&mainWindow),
      m_globals(globals),
      m_showNotes(std::move(showNotes)),
      m_closed(clock),
      m_flows(clock, std::move(onError)) {
    setObjectName(QStringLiteral("MessageWindow"));
    setWindowTitle(QStringLiteral("VLX New Firmware"));
    const QString text = QStringLiteral("New firmware is available for your VLX720.");
    auto* const StaticText1 = named(new QLabel(text), QStringLiteral("StaticText1"), text);
    auto* const BevelButton1 = named(new QPushButton(QStringLiteral("View Release Notes")),
                                     QStringLiteral("BevelButton1"), tr("View the release notes"));
    auto* const BevelButton2 = named(new QPushButton(QStringLiteral("Close")), QStringLiteral("BevelButton2"),
                                     tr("Close this message"));
    BevelButton1->setMinimumSize(NotesButton);
    BevelButton2->setMinimumSize(CloseButton);
    BevelButton2->setDefault(true);
    connect(BevelButton1, &QPushButton::clicked, this, &MessageWindow::BevelButton1_Action);
    connect(BevelButton2, &QPushButton::clicked, this, &MessageWindow::BevelButton2_Action);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(BevelButton1);
    buttons->addStretch();
    buttons->addWidget(BevelButton2);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margins);
    rows->addWidget(StaticText1, 1, Qt::AlignCenter);
    rows->addLayout(buttons);
    setFixedSize(DesignSize.expandedTo(sizeHint()));
}

Task<> MessageWindow::Run() {
    m_globals.m_MessageWindowResponse.clear();
    open();
    co_await m_closed.wait();
}

void MessageWindow::BevelButton1_Action() {
    m_flows.start(m_showNotes());
}

void MessageWindow::BevelButton2_Action() {
    m_globals.m_MessageWindowResponse = QStringLiteral("Ok");
    close();
}

// Every way of closing comes through here: the buttons, the close box, Escape.
void MessageWindow::done(int result) {
    QDialog::done(result);
    m_closed.open();
}
