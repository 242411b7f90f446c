#include "TesterTermField.h"

#include <QFontDatabase>

#include "Naming.h"

namespace {

const QColor SentColour(0, 0x88, 0);
const QColor ReceivedColour(Qt::black);

QTextCharFormat coloured(const QColor& colour) {
    QTextCharFormat format;
    format.setForeground(colour);
    return format;
}

}  // namespace

TesterTermField::TesterTermField() : LogField(SelectAll::Always) {
    named(this, QStringLiteral("TesterTermField"), tr("Commands sent and answers received"));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // The two colours are made for a light ground, also where the desktop is dark.
    QPalette light = palette();
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, ReceivedColour);
    setPalette(light);
}

void TesterTermField::insertSent(const QString& text) {
    QTextCursor cursor = textCursor();
    cursor.insertText(text, coloured(SentColour));
    setTextCursor(cursor);
    ensureCursorVisible();
}

void TesterTermField::appendReceived(const QString& text) {
    clip();
    insertAtEnd(text, coloured(ReceivedColour));
}

void TesterTermField::clip() {
    QTextCursor cursor = textCursor();
    // A selection that is held keeps the insertion point where it is, which must not let the text grow.
    if (isSelecting() && document()->characterCount() > ClipPosition + ClipLength)
        cursor.movePosition(QTextCursor::End);
    if (cursor.position() <= ClipPosition)
        return;
    // The newest text goes, on purpose: the first part of a run is what one looks for.
    cursor.setPosition(cursor.position() - ClipLength);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    setTextCursor(cursor);
}
