#include "WebEngineLibrary.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QPalette>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "BookUrl.h"
#include "WebEngineViewer.h"

// Qt shares one OpenGL context with the engine. It is made when the program starts, if the program asks; here
// it is made when the engine comes, so that a program without help does not wait for it.
Q_GUI_EXPORT QOpenGLContext* qt_gl_global_share_context();
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);

namespace {

constexpr char SandboxSwitch[] = "QTWEBENGINE_DISABLE_SANDBOX";
constexpr char FlagsVariable[] = "QTWEBENGINE_CHROMIUM_FLAGS";

// The engine ends the whole program rather than run as the superuser in its sandbox.
bool mayRun() {
#ifdef Q_OS_UNIX
    return geteuid() != 0 || qEnvironmentVariableIntValue(SandboxSwitch) != 0;
#else
    return true;
#endif
}

void shareContext() {
    if (qt_gl_global_share_context())
        return;
    auto* context = new QOpenGLContext(QCoreApplication::instance());
    // One that cannot be created tells the engine to draw without.
    context->create();
    qt_gl_set_global_share_context(context);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    // Help leaves nothing on the disk.
    QCoreApplication::setAttribute(Qt::AA_DisableShaderDiskCache);
}

// Pages with a dark dress put it on in a dark desktop. No name is ever looked up.
void setFlags() {
    const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    qputenv(FlagsVariable, qgetenv(FlagsVariable) + " --host-resolver-rules=\"MAP * ~NOTFOUND\"" +
                               " --blink-settings=preferredColorScheme=" + (isDark ? "0" : "1"));
}

}  // namespace

bool WebEngineLibrary::isAvailable() {
    return mayRun();
}

std::unique_ptr<HTMLViewer> WebEngineLibrary::make(const FolderItem& helpFolder, QWidget* parent) {
    prepare();
    return std::make_unique<WebEngineViewer>(helpFolder, parent);
}

void WebEngineLibrary::prepare() {
    if (m_isPrepared)
        return;
    m_isPrepared = true;
    shareContext();
    setFlags();
    BookUrl::registerScheme();
}
