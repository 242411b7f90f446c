// A spinning wheel: something goes on, and nobody knows how long.
#pragma once

#include <QBasicTimer>
#include <QWidget>

// Turns while it is visible.
class ProgressWheel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_timer;
    int m_step = 0;
};
