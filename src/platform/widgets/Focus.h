// Where the keyboard goes when a control is taken away from under it.
#pragma once

#include <QWidget>

// Enables or disables a control. The focus, if it stands there, goes to the page: left to the toolkit it
// would go on to the next button, which a key pressed by habit then presses.
inline void setEnabledOnPage(QWidget& control, bool enabled, QWidget& page) {
    const QWidget* const focused = control.window()->focusWidget();
    if (!enabled && focused && (focused == &control || control.isAncestorOf(focused)))
        page.setFocus();
    control.setEnabled(enabled);
}
