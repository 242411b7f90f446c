// Every control carries its system name as object name, and says to assistive tools what it is.
#pragma once

#include <QWidget>

template <typename Widget>
Widget* named(Widget* widget, const QString& systemName, const QString& accessibleName) {
    widget->setObjectName(systemName);
    widget->setAccessibleName(accessibleName);
    return widget;
}
