#include "UniHelpGlobals.h"

#include <utility>

namespace {

Task<> showError(Dialogs& dialogs, QString message, QString explanation) {
    dialogs.Beep();
    const MessageRequest request{.message = message,
                                 .explanation = explanation,
                                 .actionButton = QStringLiteral("OK"),
                                 .alternateButton = QString()};
    co_await dialogs.askCaution(request);
}

}  // namespace

Task<> UniHelpGlobals::UHError(QString text) const {
    return showError(dialogs, QStringLiteral("The Help System encounted a problem."), std::move(text));
}

Task<> UniHelpGlobals::UHViewerError(int code, const QString& text) const {
    return showError(dialogs, QStringLiteral("The Help System's HTML Viewer encounted a problem."),
                     QStringLiteral("HTMLViewer.Error (%1): ").arg(code) + text);
}
