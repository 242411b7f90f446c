#include "ReleaseNotes.h"

#include <QDir>
#include <QFileInfo>

#include "MessageWindow.h"
#include "ReleaseNotesView.h"

namespace {

// Fetched under the first name; the message of new firmware asks for the second.
const QString FetchedName = QStringLiteral("vlxfwnotes.rtf");
const QString NoticeName = QStringLiteral("VLXfwnotes.rtf");

// Null when there is no such file. A folder opens on some systems, and opening a pipe may wait for ever.
std::unique_ptr<QFile> openFile(const QString& path) {
    auto file = std::make_unique<QFile>(path);
    if (!QFileInfo(path).isFile() || !file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return nullptr;
    return file;
}

}  // namespace

ReleaseNotes::~ReleaseNotes() {
    delete m_view;
}

Task<> ReleaseNotes::_HelpReleaseNotes_Action() {
    return show(FetchedName, NoticeName);
}

Task<> ReleaseNotes::MessageWindow_BevelButton1_Action() {
    return show(NoticeName, FetchedName);
}

// Where letter case tells file names apart, only one of the two names may be there.
Task<> ReleaseNotes::show(QString name, QString otherName) {
    const QString folder = m_globals.m_FolderPath;
    if (!QDir::isAbsolutePath(folder) || folder.contains(QChar::Null))
        co_return;
    std::unique_ptr<QFile> file = openFile(folder + name);
    if (!file)
        file = openFile(folder + otherName);
    if (!file) {
        co_await m_platform.dialogs.MsgBox(QStringLiteral("ERROR: File not found! (%1)").arg(name));
        co_return;
    }
    if (file->size() > RtfStream::LargestFile) {
        co_await m_platform.dialogs.MsgBox(
            QStringLiteral("ERROR: File too large! (%1)\nRelease notes of more than 64 MB are not shown.")
                .arg(name));
        co_return;
    }
    if (!m_view)
        m_view = new ReleaseNotesView(m_platform, m_globals, m_onError);
    m_view->Show(std::move(file), QStringLiteral("VLX Firmware Release Notes"));
}

Task<> ReleaseNotes::showMessageWindow(QWidget& mainWindow) {
    // The main window may be gone, and its children with it, before the flow that waits here is let go.
    struct Owner {
        explicit Owner(MessageWindow* shown) : window(shown) {}
        Owner(const Owner&) = delete;
        Owner& operator=(const Owner&) = delete;
        ~Owner() { delete window; }

        QPointer<MessageWindow> window;
    };
    const Owner owner(new MessageWindow(
        m_platform.clock, m_globals, m_onError, [this] { return MessageWindow_BevelButton1_Action(); },
        mainWindow));
    co_await owner.window->Run();
}
