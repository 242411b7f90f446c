// Every control carries its system name as object name, and says to assistive tools what it is: a button by
// its caption, a ValueLabel by its name and value, all others by the name given here.
#pragma once

#include <QWidget>

template <typename Widget>
Widget* named(Widget* widget, const QString& systemName) {
    widget->setObjectName(systemName);
    return widget;
}

template <typename Widget>
Widget* named(Widget* widget, const QString& systemName, const QString& accessibleName) {
    widget->setAccessibleName(accessibleName);
    return named(widget, systemName);
}
