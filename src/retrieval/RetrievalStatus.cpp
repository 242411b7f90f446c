#include "RetrievalStatus.h"

#include <QRegularExpression>

namespace {

// "150 Opening BINARY mode data connection for name (123 bytes)."
std::int32_t sizeIn(const QString& reply) {
    static const QRegularExpression pattern(QStringLiteral("^1[25][05] .*\\((\\d+) bytes\\)"));
    return pattern.match(reply).captured(1).toInt();
}

}  // namespace

void RetrievalStatus::Error_FTP(const QString& text) {
    FTPStatusClass::Error_FTP(text);
    lastError = text.trimmed();
    m_receiver.ended();
}

void RetrievalStatus::Successful_FTP(const QString& text) {
    FTPStatusClass::Successful_FTP(text);
    m_receiver.ended();
}

void RetrievalStatus::Response_FTP(const QString& text) {
    FTPStatusClass::Response_FTP(text);
    if (text.startsWith(u"RETR"))
        m_size = 0;
    else if (const std::int32_t size = sizeIn(text))
        m_size = size;
}

void RetrievalStatus::Progress_FTP(std::int32_t count) {
    const QString size = m_size > 0 ? QStringLiteral(" of ") + FormatBytes(m_size) : QString();
    m_receiver.progressed(count, FormatBytes(count) + size);
}
