// The "Command Tester" tab.
#pragma once

#include <array>

#include <QWidget>

#include "Clock.h"
#include "Macros.h"

class MacroButton;
class QKeyEvent;
class QLineEdit;
class QPushButton;
class SerialPort;
class TesterTermField;

class CommandTesterTab final : public QWidget {
    Q_OBJECT

public:
    // What is shown at once of what has come, in bytes.
    static constexpr qsizetype ShowLimit = 4000;
    // The least time between two arrivals that are shown: laying out the terminal anew takes its time.
    static constexpr std::chrono::milliseconds ShowPeriod{50};

    CommandTesterTab(Clock& clock, SerialPort& serialPort, Macros& macros);

    // Buttons and field for sending; the focus goes to the field.
    void enterTab(bool canSend);
    // Bytes have come while this tab is shown. Those that come close behind others wait in the port for a
    // moment, until bytesWait().
    void takeReceived();
    void showMacroCaptions();

Q_SIGNALS:
    void EditMacrosButton_Action();
    void bytesWait();
    // A word for the status line; empty when all is well.
    void statusTold(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TesterField_KeyDown(const QKeyEvent& event);
    void CommandMacroButton_Action(int index) { ProcessCommandMacro(index); }
    void ProcessCommandMacro(int index);
    bool canBeSent(const QString& text);
    void ClearButton_Action();
    QWidget* macroButtons();

    SerialPort& Serial1;
    Macros& m_macros;
    QLineEdit* TesterField;
    QPushButton* EditMacrosButton;
    QPushButton* ClearButton;
    std::array<MacroButton*, Macros::Count> CommandMacroButton{};
    TesterTermField* m_terminal;
    ClockTimer m_rest;
};
