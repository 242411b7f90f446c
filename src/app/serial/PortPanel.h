// The controls of the "Port" tab that the port selection drives.
#pragma once

#include <QString>
#include <QStringList>

class PortPanel {
public:
    PortPanel() = default;
    PortPanel(const PortPanel&) = delete;
    PortPanel& operator=(const PortPanel&) = delete;
    virtual ~PortPanel() = default;

    virtual void setSerialPortMenuRows(const QStringList& names) = 0;
    // An index past the end of the list selects nothing.
    virtual void setSerialPortMenuIndex(int index) = 0;
    virtual QString serialPortMenuText() const = 0;
    virtual QString portFieldText() const = 0;
    // The by-name port, PortCheck and PortField.
    virtual void showByNamePort(bool shown) = 0;
};
