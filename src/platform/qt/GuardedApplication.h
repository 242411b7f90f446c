#pragma once

#include <exception>
#include <functional>

#include <QApplication>

// The application object, with a net under every event handler: what escapes from one goes to the default
// error handling, and the event loop goes on. It is the last net: the toolkit's own frames in between are
// left without clean-up, so a handler that may fail starts a flow, whose errors `Flows` catches.
class GuardedApplication final : public QApplication {
public:
    using ErrorHandler = std::function<void(const std::exception_ptr&)>;

    using QApplication::QApplication;

    // Without a handler errors go up as they would.
    void setErrorHandler(ErrorHandler onError) { m_onError = std::move(onError); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    ErrorHandler m_onError;
};
