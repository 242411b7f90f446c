#include "Help.h"

#include <QDesktopServices>
#include <QUrl>

#include "UniHelpViewer.h"

Help::Help(Platform& platform, const Flows::ErrorHandler& onError)
    : m_globals(platform.clock, platform.dialogs), UniHelp(m_globals, platform.folders, [this] {
          return std::make_unique<UniHelpViewer>(m_globals, m_pageViews);
      }) {
    m_globals.onError = onError;
    m_globals.ShowURL = [](const QString& url) { QDesktopServices::openUrl(QUrl(url)); };
}

QString Help::pageOfTab(int tab) {
    constexpr const char* Pages[] = {"port.htm", "firmware.htm", "operate.htm", "configuration.htm",
                                     "tester.htm"};
    return QString::fromLatin1(Pages[tab]);
}

void Help::showFault(std::optional<int> code) {
    if (code)
        show(QStringLiteral("faults.htm"), QStringLiteral("fault-%1").arg(*code));
    else
        show(QStringLiteral("faulttable.htm"));
}

// The book may have no folder, which is an error like any other that nobody catches.
void Help::show(const QString& page, const QString& anchor) {
    try {
        UniHelp.Run(UniHelp.HelpFolder.Child(page), anchor);
    } catch (...) {
        m_globals.onError(std::current_exception());
    }
}
