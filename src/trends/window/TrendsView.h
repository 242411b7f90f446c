// The strip charts, under the mouse and the keyboard.
#pragma once

#include <QWidget>

#include "TimeAxis.h"

// The wheel, "+" and "-" zoom; the mouse, Left, Right, Home and End move the cursor.
class TrendsView final : public QWidget {
    Q_OBJECT

public:
    explicit TrendsView(const Trends& trends);

    void setPaused(bool paused);
    void zoom(double factor);
    // What stands at the cursor, or last of all, in words.
    QString readOut() const;

    // The recorded hour has grown.
    void refresh();

    QSize sizeHint() const override;

Q_SIGNALS:
    void readOutChanged(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool moveCursor(int key);
    void setCursorTime(std::optional<Trends::Milliseconds> time);
    const Trends::Sample* pointedAt() const;

    const Trends& m_trends;
    TimeAxis m_axis;
    std::optional<Trends::Milliseconds> m_cursor;
};
