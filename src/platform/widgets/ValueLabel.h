// A label that shows a value, and tells a screen reader name and value: "PA Voltage 53.2 V".
#pragma once

#include <QLabel>

class ValueLabel final : public QLabel {
    Q_OBJECT

public:
    // `name` says what the value is.
    explicit ValueLabel(QString name, const QString& value = {}) : m_name(std::move(name)) {
        setValue(value);
    }

    void setValue(const QString& value) {
        setText(value);
        setAccessibleName(value.isEmpty() ? m_name : m_name + u' ' + value);
    }

private:
    QString m_name;
};
