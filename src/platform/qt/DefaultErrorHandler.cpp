#include "DefaultErrorHandler.h"

namespace {

QString messageOf(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& known) {
        return QString::fromUtf8(known.what());
    } catch (...) {
        return QStringLiteral("unknown error");
    }
}

}  // namespace

void DefaultErrorHandler::handle(const std::exception_ptr& error) {
    const QString line = QStringLiteral("Error: ") + messageOf(error);
    m_log(line);
    if (!m_box || m_box->isDone())
        m_box.emplace(m_dialogs.MsgBox(line));
}
