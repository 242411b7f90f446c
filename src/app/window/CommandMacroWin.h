// The editor of the fifteen macros.
#pragma once

#include <array>
#include <optional>

#include <QDialog>

#include "Dialogs.h"
#include "Macros.h"

class QLineEdit;
class QPushButton;

class CommandMacroWin final : public QDialog {
    Q_OBJECT

public:
    // Shows the macros; "Save" puts them back and emits saved(). Escape and the close box ask before they
    // give changes up.
    CommandMacroWin(Dialogs& dialogs, Macros& macros, QWidget* parent);

    void reject() override;

Q_SIGNALS:
    void saved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Event_Open();
    Task<> askAndClose();
    bool isChanged() const;
    void BevelButton1_Action();
    void BevelButton2_Action();
    bool MacroCommand_KeyDown(QLineEdit& field, int key);
    void MacroCommand_MouseDown(QLineEdit& field, const QPoint& globalPosition);

    Dialogs& m_dialogs;
    Macros& m_macros;
    std::array<QLineEdit*, Macros::Count> MacroField{};
    std::array<QLineEdit*, Macros::Count> MacroCommand{};
    QPushButton* BevelButton1;
    QPushButton* BevelButton2;
    std::optional<Task<>> m_question;
};
