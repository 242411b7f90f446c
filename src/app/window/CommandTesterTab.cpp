#include "CommandTesterTab.h"

#include <algorithm>

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Focus.h"
#include "Keys.h"
#include "MacroButton.h"
#include "Naming.h"
#include "SerialPort.h"
#include "TesterTermField.h"
#include "TesterText.h"
#include "Text.h"

namespace {

constexpr int MacroColumns = 5;

// Return, Enter or a semicolon, which needs AltGr or Option on some keyboards; not a shortcut, whatever code
// that gives.
bool isSendKey(const QKeyEvent& event) {
    if (isShortcut(event) || event.modifiers().testFlag(Qt::MetaModifier))
        return false;
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return event.text() == u";" || (isReturn && !event.modifiers().testFlag(Qt::AltModifier));
}

// The first character that a byte cannot hold.
QString unsendable(const QString& text) {
    const auto* found = std::find_if(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    return found == text.end() ? QString() : QString(*found);
}

}  // namespace

CommandTesterTab::CommandTesterTab(Clock& clock, SerialPort& serialPort, Macros& macros)
    : Serial1(serialPort),
      m_macros(macros),
      TesterField(named(new QLineEdit, QStringLiteral("TesterField"), tr("VLX command"))),
      EditMacrosButton(named(new QPushButton(tr("Edit Macros")), QStringLiteral("EditMacrosButton"))),
      ClearButton(named(new QPushButton(tr("Clear")), QStringLiteral("ClearButton"))),
      m_terminal(new TesterTermField),
      m_rest(clock, ShowPeriod, [this] {
          if (!Serial1.LookAhead().isEmpty())
              Q_EMIT bytesWait();
      }) {
    ClearButton->setToolTip(QStringLiteral("Erase output window"));
    EditMacrosButton->setToolTip(QStringLiteral("Open macro editor"));
    TesterField->installEventFilter(this);
    TesterField->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* label = new QLabel(QStringLiteral("Enter VLX command. Return key or semicolon sends:"));
    label->setBuddy(TesterField);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(label);
    auto* entry = new QHBoxLayout;
    entry->addWidget(TesterField, 1);
    entry->addWidget(EditMacrosButton);
    entry->addWidget(ClearButton);
    rows->addLayout(entry);
    rows->addWidget(macroButtons());
    rows->addWidget(m_terminal, 1);

    connect(EditMacrosButton, &QPushButton::clicked, this, &CommandTesterTab::EditMacrosButton_Action);
    connect(ClearButton, &QPushButton::clicked, this, &CommandTesterTab::ClearButton_Action);
}

QWidget* CommandTesterTab::macroButtons() {
    auto* group = new QWidget;
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int index = 0; index < Macros::Count; ++index) {
        auto* button = named(new MacroButton, QStringLiteral("CommandMacroButton%1").arg(index));
        button->setProperty("index", index);
        connect(button, &QPushButton::clicked, this, [this, index] { CommandMacroButton_Action(index); });
        grid->addWidget(button, index / MacroColumns, index % MacroColumns);
        CommandMacroButton[static_cast<std::size_t>(index)] = button;
    }
    for (int column = 0; column < MacroColumns; ++column)
        grid->setColumnStretch(column, 1);
    return group;
}

void CommandTesterTab::showMacroCaptions() {
    for (std::size_t index = 0; index < Macros::Count; ++index)
        CommandMacroButton[index]->setMacro(m_macros.mCommandMacroButtonText[index],
                                            m_macros.mCommandMacroCommandText[index]);
}

void CommandTesterTab::enterTab(bool canSend) {
    for (QPushButton* button : CommandMacroButton)
        setEnabledOnPage(*button, canSend, *this);
    setEnabledOnPage(*TesterField, canSend, *this);
    setEnabledOnPage(*ClearButton, canSend, *this);
    if (canSend)
        TesterField->setFocus();
}

bool CommandTesterTab::eventFilter(QObject* watched, QEvent* event) {
    if (watched == TesterField && event->type() == QEvent::KeyPress)
        return TesterField_KeyDown(*static_cast<const QKeyEvent*>(event));
    return QWidget::eventFilter(watched, event);
}

bool CommandTesterTab::TesterField_KeyDown(const QKeyEvent& event) {
    if (!isSendKey(event))
        return false;
    const QString typed = TesterField->text() + event.text();
    // A key that is held down sends once.
    if (!event.isAutoRepeat() && canBeSent(typed)) {
        m_terminal->insertSent(u'\n' + typed);
        Serial1.Write(Text::toLine(Text::Trim(typed)));
        TesterField->clear();
    }
    return true;
}

void CommandTesterTab::ProcessCommandMacro(int index) {
    const QString& command = m_macros.mCommandMacroCommandText[static_cast<std::size_t>(index)];
    if (command.isEmpty() || !canBeSent(command))
        return;
    m_terminal->insertSent(command);
    Serial1.Write(Text::toLine(command));
}

bool CommandTesterTab::canBeSent(const QString& text) {
    const QString character = unsendable(text);
    Q_EMIT statusTold(character.isEmpty()
                          ? QString()
                          : tr("Not sent: the line cannot carry the character \"%1\"").arg(character));
    return character.isEmpty();
}

void CommandTesterTab::ClearButton_Action() {
    m_terminal->clear();
}

void CommandTesterTab::takeReceived() {
    if (m_rest.isOn())
        return;
    m_terminal->appendReceived(spellOut(Serial1.Read(ShowLimit)));
    m_rest.start(ClockTimer::Mode::Single);
}
