#include "QtDialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>

#include "DialogWait.h"

namespace {

// The mark of the windows that are nobody's parent.
constexpr const char* HasNoDialogs = "hasNoDialogs";

// Owns a dialog that its parent window may delete before. Never deletes it at once: it may be the dialog
// whose signal is being handled.
template <typename D>
class OwnedDialog {
public:
    explicit OwnedDialog(D* dialog) : m_dialog(dialog) {}
    OwnedDialog(const OwnedDialog&) = delete;
    OwnedDialog& operator=(const OwnedDialog&) = delete;
    ~OwnedDialog() {
        if (!m_dialog)
            return;
        m_dialog->hide();
        m_dialog->deleteLater();
    }

    D* operator->() const { return m_dialog; }
    D* get() const { return m_dialog; }

private:
    QPointer<D> m_dialog;
};

QString filterOf(const FileType& type) {
    return type.extension.isEmpty() ? QString() : QStringLiteral("%1 (*%2)").arg(type.name, type.extension);
}

QString withExtension(const QString& path, const QString& extension) {
    return path.endsWith(extension, Qt::CaseInsensitive) ? path : path + extension;
}

QFileDialog* makeFileDialog(QWidget* parent, const QString& name, const QString& title,
                            const QString& folder) {
    auto* dialog = new QFileDialog(parent, title);
    dialog->setObjectName(name);
    dialog->setProperty(HasNoDialogs, true);
    // What is remembered may be a file: the dialog then begins beside it.
    const QFileInfo start(folder);
    if (start.isDir())
        dialog->setDirectory(folder);
    else if (start.isFile())
        dialog->setDirectory(start.absolutePath());
    return dialog;
}

Task<QString> chooseFile(Clock& clock, QFileDialog* fileDialog) {
    const OwnedDialog<QFileDialog> dialog(fileDialog);
    // Taken as the user accepts: a turn of the loop later the dialog may be reading another folder.
    QString chosen;
    const QObject receiver;
    QObject::connect(fileDialog, &QFileDialog::fileSelected, &receiver,
                     [&chosen](const QString& path) { chosen = QDir::cleanPath(path); });
    const bool isAccepted = co_await DialogWait(clock, fileDialog);
    co_return isAccepted ? chosen : QString();
}

}  // namespace

void QtDialogs::keepAwayFrom(QWidget& window) {
    window.setProperty(HasNoDialogs, true);
}

void QtDialogs::Beep() {
    QApplication::beep();
}

Task<> QtDialogs::MsgBox(QString text, BoxKind kind) {
    const QMessageBox::Icon icon = kind == BoxKind::Notice ? QMessageBox::Information : QMessageBox::Warning;
    const OwnedDialog<QMessageBox> box(makeBox(QStringLiteral("MsgBox"), icon, text));
    box->addButton(QMessageBox::Ok);
    co_await DialogWait(m_clock, box.get());
}

Task<bool> QtDialogs::askCaution(MessageRequest request) {
    const Answer whenClosed = request.kind == MessageKind::Question ? Answer::Alternate : Answer::Action;
    const Answer answer = co_await ask(std::move(request), whenClosed);
    co_return answer == Answer::Action;
}

Task<QString> QtDialogs::saveFile(SaveFileRequest request) {
    for (;;) {
        QFileDialog* dialog =
            makeFileDialog(parent(), QStringLiteral("SaveDialog"), request.title, request.initialFolder);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        // It would ask about the name before the extension is appended.
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        dialog->setNameFilter(filterOf(request.type));
        dialog->selectFile(request.suggestedName);
        if (!request.prompt.isEmpty())
            dialog->setLabelText(QFileDialog::FileName, request.prompt);
        const QString chosen = co_await chooseFile(m_clock, dialog);
        if (chosen.isEmpty())
            co_return QString();
        const QString path = withExtension(chosen, request.type.extension);
        const bool isSettled = co_await mayReplace(path);
        if (isSettled)
            co_return path;
        request.initialFolder = QFileInfo(path).absolutePath();
        request.suggestedName = QFileInfo(path).fileName();
    }
}

Task<QString> QtDialogs::openFile(OpenFileRequest request) {
    QFileDialog* dialog =
        makeFileDialog(parent(), QStringLiteral("OpenDialog"), request.title, request.initialFolder);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(filterOf(request.type));
    const QString chosen = co_await chooseFile(m_clock, dialog);
    co_return chosen;
}

Task<QString> QtDialogs::selectFolder(SelectFolderRequest request) {
    QFileDialog* dialog =
        makeFileDialog(parent(), QStringLiteral("SelectFolderDialog"), QString(), request.initialFolder);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    if (!request.actionButtonCaption.isEmpty())
        dialog->setLabelText(QFileDialog::Accept, request.actionButtonCaption);
    const QString chosen = co_await chooseFile(m_clock, dialog);
    co_return chosen;
}

// The window that the user is in. A box is nobody's parent: it goes when it is answered, and what belonged to
// it with it; the toolkit may call it the active one for a while after that.
QWidget* QtDialogs::parent() const {
    for (QWidget* window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        while (window && (window->property(HasNoDialogs).toBool() || !window->isVisible()))
            window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
        if (window)
            return window;
    }
    return m_mainWindow && m_mainWindow->isVisible() ? m_mainWindow.data() : nullptr;
}

QMessageBox* QtDialogs::makeBox(const QString& name, QMessageBox::Icon icon, const QString& text) const {
    auto* box = new QMessageBox(parent());
    box->setObjectName(name);
    box->setProperty(HasNoDialogs, true);
    box->setWindowTitle(QStringLiteral("VLX Utility"));
    box->setIcon(icon);
    // Names of files and answers of servers may look like markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    return box;
}

Task<QtDialogs::Answer> QtDialogs::ask(MessageRequest request, Answer whenClosed) {
    const QMessageBox::Icon icon =
        request.kind == MessageKind::Question ? QMessageBox::Question : QMessageBox::Warning;
    const OwnedDialog<QMessageBox> box(makeBox(QStringLiteral("MessageDialog"), icon, request.message));
    box->setInformativeText(request.explanation);
    QPushButton* action = box->addButton(request.actionButton, QMessageBox::AcceptRole);
    action->setObjectName(QStringLiteral("ActionButton"));
    box->setDefaultButton(action);
    QPushButton* alternate = nullptr;
    if (!request.alternateButton.isEmpty()) {
        alternate = box->addButton(request.alternateButton, QMessageBox::RejectRole);
        alternate->setObjectName(QStringLiteral("AlternateActionButton"));
    }
    box->setEscapeButton(whenClosed == Answer::Alternate ? alternate : action);
    co_await DialogWait(m_clock, box.get());
    co_return box->clickedButton() == action ? Answer::Action : Answer::Alternate;
}

Task<bool> QtDialogs::mayReplace(QString path) {
    if (!QFileInfo::exists(path))
        co_return true;
    const MessageRequest request{
        .message = QStringLiteral("\"%1\" already exists.").arg(QFileInfo(path).fileName()),
        .explanation = QStringLiteral("Replacing it overwrites what it holds."),
        .actionButton = QStringLiteral("Replace"),
        .alternateButton = QStringLiteral("Cancel")};
    const Answer answer = co_await ask(request, Answer::Alternate);
    co_return answer == Answer::Action;
}
