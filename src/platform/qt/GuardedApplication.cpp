#include "GuardedApplication.h"

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        if (!m_onError)
            throw;
        m_onError(std::current_exception());
        return false;
    }
}
