// What a save or restore shows while it runs.
#pragma once

#include <QString>

class ProgressView {
public:
    ProgressView() = default;
    ProgressView(const ProgressView&) = delete;
    ProgressView& operator=(const ProgressView&) = delete;
    virtual ~ProgressView() = default;

    virtual void setStaticText1(const QString& text) = 0;
    // A maximum of 0 makes the bar an indeterminate one.
    virtual void setProgressBar1Maximum(int maximum) = 0;
    // Values past the maximum show a full bar.
    virtual void setProgressBar1Value(int value) = 0;
    // In front of the main window.
    virtual void showInPlace() = 0;
    virtual void closeWindow() = 0;
};

// Shows the window with a text and an empty bar, and closes it at the end, also when the flow in it is
// cancelled.
class ProgressSpan {
public:
    ProgressSpan(ProgressView& view, const QString& text) : m_view(view) {
        m_view.setStaticText1(text);
        m_view.setProgressBar1Value(0);
        m_view.showInPlace();
    }
    ProgressSpan(const ProgressSpan&) = delete;
    ProgressSpan& operator=(const ProgressSpan&) = delete;
    ~ProgressSpan() { m_view.closeWindow(); }

private:
    ProgressView& m_view;
};
