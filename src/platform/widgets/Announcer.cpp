#include "Announcer.h"

#include <utility>

#include <QAccessible>

void Announcer::announce(const QString& text) {
    m_untold = text;
    if (!m_rest.isOn())
        tell();
}

void Announcer::tell() {
    const QString text = std::exchange(m_untold, {});
    if (text.isEmpty())
        return;
    m_widget.setAccessibleDescription(text);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&m_widget, text);
#else
    QAccessibleEvent event(&m_widget, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
    m_rest.start(ClockTimer::Mode::Single);
}
