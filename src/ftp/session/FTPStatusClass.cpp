#include "FTPStatusClass.h"

#include "FTPSessionClass.h"
#include "Globals.h"
#include "Text.h"

void FTPStatusClass::Error_FTP(const QString& text) {
    m_globals.FTPError = true;
    setStatusText(text, true);
}

void FTPStatusClass::Progress_FTP(std::int32_t) {}

void FTPStatusClass::Successful_FTP(const QString& text) {
    if (Text::equal(text, u"File Transfer Complete."))
        setStatusText(QStringLiteral("Copied \"%1\" from Tessarin").arg(m_globals.FTPFile), false);
    else
        setStatusText(text, !Text::equal(text, u"Connected to Tessarin server.") &&
                                !Text::equal(text, u"Logoff Complete."));
    m_globals.FTPDone = true;
}

void FTPStatusClass::Response_FTP(const QString& text) {
    if (text.isEmpty())
        return;
    if (m_globals.mRETR || !text.startsWith(u"RETR", Qt::CaseInsensitive)) {
        setStatusText(text, true);
        return;
    }
    m_globals.mRETR = true;
    setStatusText(QStringLiteral("Copying files to \"%1\"").arg(m_globals.m_FolderPath), false);
}

void FTPStatusClass::Status_FTP(const QString& text) {
    setStatusText(text, !Text::equal(text, FTPSessionClass::ConnectingText()));
}

QString FTPStatusClass::FormatBytes(std::int32_t count) const {
    constexpr std::int32_t KB = 1024;
    constexpr std::int32_t MB = 1024 * KB;
    if (count <= KB)
        return Text::Format(count, u"0") + QStringLiteral(" bytes");
    if (count <= MB)
        return Text::Format(static_cast<double>(count) / KB, u"0") + QStringLiteral(" KB");
    return Text::Format(static_cast<double>(count) / MB, u"0.0") + QStringLiteral(" MB");
}

void FTPStatusClass::setStatusText(const QString& text, bool isTrace) {
    m_globals.UpdateTimeStamp();
    m_globals.SetStatusText(text, isTrace);
}
