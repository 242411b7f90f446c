#include "CopyProgress.h"

namespace {

constexpr std::chrono::milliseconds RepaintStep{100};

}  // namespace

void CopyProgress::show(const QString& name, const QString& done) {
    if (m_isShown && m_clock.now() - m_shownAt < RepaintStep)
        return;
    m_isShown = true;
    m_shownAt = m_clock.now();
    m_globals.showStatus(QStringLiteral("Copying \"%1\": %2").arg(name, done));
}

void CopyProgress::clear() {
    if (m_isShown)
        m_globals.showStatus(QString());
    m_isShown = false;
}
