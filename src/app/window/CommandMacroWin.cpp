#include "CommandMacroWin.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "Keys.h"
#include "Naming.h"
#include "Text.h"

CommandMacroWin::CommandMacroWin(Dialogs& dialogs, Macros& macros, QWidget* parent)
    : QDialog(parent),
      m_dialogs(dialogs),
      m_macros(macros),
      BevelButton1(named(new QPushButton(QStringLiteral("Save")), QStringLiteral("BevelButton1"))),
      BevelButton2(named(new QPushButton(QStringLiteral("Cancel")), QStringLiteral("BevelButton2"))) {
    setObjectName(QStringLiteral("CommandMacroWin"));
    setWindowTitle(QStringLiteral("Edit Macros"));
    resize(594, 500);

    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(2);
    grid->addWidget(new QLabel(QStringLiteral("Macro Label")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Macro Commands")), 0, 1);
    for (int row = 0; row < Macros::Count; ++row) {
        const auto index = static_cast<std::size_t>(row);
        MacroField[index] = named(new QLineEdit, QStringLiteral("MacroField%1").arg(row),
                                  tr("Label of macro %1").arg(row + 1));
        MacroCommand[index] = named(new QLineEdit, QStringLiteral("MacroCommand%1").arg(row),
                                    tr("Commands of macro %1").arg(row + 1));
        MacroCommand[index]->installEventFilter(this);
        grid->addWidget(MacroField[index], row + 1, 0);
        grid->addWidget(MacroCommand[index], row + 1, 1);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 3);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(BevelButton2);
    buttons->addWidget(BevelButton1);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(grid);
    rows->addStretch();
    rows->addLayout(buttons);
    // Return in a field ends nothing.
    BevelButton1->setAutoDefault(false);
    BevelButton2->setAutoDefault(false);

    connect(BevelButton1, &QPushButton::clicked, this, &CommandMacroWin::BevelButton1_Action);
    connect(BevelButton2, &QPushButton::clicked, this, &CommandMacroWin::BevelButton2_Action);
    Event_Open();
}

void CommandMacroWin::Event_Open() {
    for (std::size_t row = 0; row < Macros::Count; ++row) {
        MacroField[row]->setText(m_macros.mCommandMacroButtonText[row]);
        MacroCommand[row]->setText(m_macros.mCommandMacroCommandText[row]);
    }
    MacroField[0]->selectAll();
    MacroField[0]->setFocus();
}

void CommandMacroWin::BevelButton1_Action() {
    // Pasted line ends have no place in a macro.
    for (std::size_t row = 0; row < Macros::Count; ++row) {
        m_macros.mCommandMacroButtonText[row] = Text::onOneLine(MacroField[row]->text());
        m_macros.mCommandMacroCommandText[row] = Text::onOneLine(MacroCommand[row]->text());
    }
    Q_EMIT saved();
    accept();
}

void CommandMacroWin::BevelButton2_Action() {
    QDialog::reject();
}

// Escape and the close box come through here.
void CommandMacroWin::reject() {
    if (!isChanged())
        QDialog::reject();
    else if (!m_question || m_question->isDone())
        m_question = askAndClose();
}

Task<> CommandMacroWin::askAndClose() {
    MessageRequest request{.message = tr("The macros were changed."),
                           .explanation = tr("Closing the editor gives the changes up."),
                           .actionButton = tr("Keep Editing"),
                           .alternateButton = tr("Discard")};
    const bool isKept = co_await m_dialogs.askCaution(std::move(request));
    if (!isKept)
        QDialog::reject();
}

bool CommandMacroWin::isChanged() const {
    for (std::size_t row = 0; row < Macros::Count; ++row)
        if (MacroField[row]->isModified() || MacroCommand[row]->isModified())
            return true;
    return false;
}

bool CommandMacroWin::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (field && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        return isShortcut(*key) && MacroCommand_KeyDown(*field, key->key());
    }
    if (field && event->type() == QEvent::ContextMenu) {
        MacroCommand_MouseDown(*field, static_cast<const QContextMenuEvent*>(event)->globalPos());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool CommandMacroWin::MacroCommand_KeyDown(QLineEdit& field, int key) {
    switch (key) {
        case Qt::Key_A:
            field.selectAll();
            break;
        case Qt::Key_C:
            field.copy();
            break;
        case Qt::Key_X:
            field.cut();
            break;
        case Qt::Key_V:
            field.paste();
            break;
        default:
            break;
    }
    return true;
}

void CommandMacroWin::MacroCommand_MouseDown(QLineEdit& field, const QPoint& globalPosition) {
    auto* menu = new QMenu(&field);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* cut = menu->addAction(QStringLiteral("Cut"), &field, &QLineEdit::cut);
    QAction* copy = menu->addAction(QStringLiteral("Copy"), &field, &QLineEdit::copy);
    QAction* paste = menu->addAction(QStringLiteral("Paste"), &field, &QLineEdit::paste);
    QAction* remove =
        menu->addAction(QStringLiteral("Delete"), &field, [&field] { field.insert(QString()); });
    menu->addSeparator();
    menu->addAction(QStringLiteral("Select All"), &field, &QLineEdit::selectAll);
    for (QAction* action : {cut, copy, remove})
        action->setEnabled(field.hasSelectedText());
    paste->setEnabled(!QGuiApplication::clipboard()->text().isEmpty());
    menu->popup(globalPosition);
}
