#include "MacroButton.h"

#include <QEvent>
#include <QStyle>

#include "Text.h"

void MacroButton::setMacro(const QString& caption, const QString& command) {
    m_caption = caption;
    setAccessibleName(caption);
    setAccessibleDescription(command);
    // What the user typed may look like markup.
    setToolTip(QStringLiteral("<p style='white-space:pre-wrap'>%1<br/>%2</p>")
                   .arg(caption.toHtmlEscaped(), command.toHtmlEscaped()));
    elide();
}

void MacroButton::resizeEvent(QResizeEvent* event) {
    SendButton::resizeEvent(event);
    elide();
}

void MacroButton::changeEvent(QEvent* event) {
    SendButton::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void MacroButton::elide() {
    const int margins = 2 * style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this);
    const QString shown = fontMetrics().elidedText(m_caption, Qt::ElideRight, width() - margins);
    // A "&" is a character of the caption, not a mark for a shortcut.
    setText(Text::ReplaceAllB(shown, QStringLiteral("&"), QStringLiteral("&&")));
}
