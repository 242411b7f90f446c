// Tells a screen reader what changes without the user's act.
#pragma once

#include <QWidget>

#include "Clock.h"

// At most one announcement a second: of those that come closer together the last one is told, when the second
// is over.
class Announcer {
public:
    static constexpr std::chrono::milliseconds Period{1000};

    // Announces on behalf of `widget`.
    Announcer(Clock& clock, QWidget& widget) : m_widget(widget), m_rest(clock, Period, [this] { tell(); }) {}

    void announce(const QString& text);

private:
    void tell();

    QWidget& m_widget;
    QString m_untold;
    ClockTimer m_rest;
};
