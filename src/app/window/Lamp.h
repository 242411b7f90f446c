// A label that can be lit, to be read from across the room.
#pragma once

#include <QLabel>

class Lamp final : public QLabel {
    Q_OBJECT

public:
    // `colour` fills the lamp while it is lit; `name` tells a screen reader what it stands for.
    Lamp(const QString& text, const QString& name, const QColor& colour);

    // Lit is enabled and bold; dark is disabled and plain.
    void setLit(bool isLit);
    // A lit lamp that nobody renews: it stays bold, and loses its colour.
    void setDim(bool isDim);

protected:
    void changeEvent(QEvent* event) override;

private:
    void paintState();

    QString m_name;
    QColor m_colour;
    bool m_isLit = false;
    bool m_isDim = false;
};
