// A pseudo-terminal: a port to open at one end, and the test at the other.
#pragma once

#include <QByteArray>
#include <QString>

class PseudoTerminal {
public:
    PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal();

    // What the port is to open.
    const QString& path() const { return m_path; }
    // The bytes that the port has sent and that were not taken yet.
    QByteArray take();
    void send(const QByteArray& bytes);
    // The speed that the port has set, bit/s.
    int speed() const;
    // As when an adapter is pulled out.
    void hangUp();

private:
    int m_master = -1;
    QString m_path;
};
