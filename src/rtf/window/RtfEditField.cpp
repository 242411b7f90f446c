#include "RtfEditField.h"

#include <algorithm>
#include <cmath>

#include <QAbstractTextDocumentLayout>
#include <QGlyphRun>
#include <QPainter>
#include <QPointer>
#include <QRawFont>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

#include "Errors.h"
#include "Text.h"

namespace {

constexpr double SmallCapital = 0.8;       // of the size
constexpr double WideSpacing = 3.0;        // what a letter spacing reads as
constexpr qsizetype LongestBuffer = 1024;  // characters
constexpr int FullProgress = 100;
constexpr int ProgressStep = 100;
constexpr double ShadowAside = 0.1;  // of the size
constexpr QColor ShadowColor(128, 128, 128, 220);

// Swallows the timer with which the toolkit lays out, in steps that grow to a tenth of a second.
class TimerFilter final : public QObject {
protected:
    bool eventFilter(QObject*, QEvent* event) override { return event->type() == QEvent::Timer; }
};

// Mac Roman has no capital of these: a "µ" would become a letter that looks like an M.
const QString WithoutCapital = QStringLiteral("\u00B5\u0192\u03C0");

QString upperCase(const QString& text) {
    QString result;
    for (const QChar character : text)
        result += WithoutCapital.contains(character) ? QString(character) : QString(character).toUpper();
    return result;
}

bool isSmallLetter(const QString& text, qsizetype at) {
    const QString character = text.mid(at, 1);
    return Text::StrComp(character, upperCase(character)) != 0;
}

}  // namespace

RtfEditField::RtfEditField(Clock& clock, Dialogs& dialogs, QWidget* parent)
    : QTextEdit(parent), m_clock(clock), m_dialogs(dialogs), m_insertion(document()) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void RtfEditField::SetState(const RtfState& state) {
    WriteBuffer();
    if (currentstate != state || m_isLookStale)
        setLook(state);
    currentstate = state;
    m_isLookStale = false;
}

// No look can come between what has gathered and what follows: of a long text a part is placed already, so
// that none takes long.
void RtfEditField::Write(QByteArrayView text) {
    buffer.append(text);
    if (buffer.size() >= LongestBuffer)
        WriteBuffer();
}

void RtfEditField::setLook(const RtfState& state) {
    m_insertion.setSelTextFont(state.font);
    m_insertion.setSelTextSize(state.textsize);
    m_insertion.setSelTextColor(state.foregroundcolor);
    m_insertion.setSelBold(state.bold);
    m_insertion.setSelItalic(state.italic);
    m_insertion.setSelUnderline(state.underline);
    m_insertion.setSelExtend(state.expanded > 0);
    m_insertion.setSelCondense(state.expanded < 0);
    m_insertion.setSelOutline(state.outline);
    m_insertion.setSelShadow(state.shadow);
    m_insertion.setSelAlignment(state.alignment < RtfAlignment::Justified ? state.alignment
                                                                          : RtfAlignment::Left);
}

bool RtfEditField::Preprocess() {
    if (!m_isAway)
        oldtop = y();
    m_isAway = true;
    stayAway();
    clear();
    delete m_read;
    m_read = new QTextDocument(this);
    m_read->setUndoRedoEnabled(false);
    m_read->setDefaultFont(font());
    m_insertion = InsertionPoint(m_read, palette().color(QPalette::Text));
    buffer.clear();
    currentstate = RtfState();
    m_isLookStale = true;
    return true;
}

void RtfEditField::stayAway() {
    if (m_isAway)
        move(x(), window()->height() + 1);
}

bool RtfEditField::Postprocess() {
    WriteBuffer();
    // The toolkit deletes the one that it has made itself.
    const QPointer<QTextDocument> former = document();
    // Or the toolkit would lay out a good part of it for other lines first.
    m_read->setDefaultTextOption(former->defaultTextOption());
    m_read->setTextWidth(viewport()->width());
    setDocument(m_read);
    // The toolkit keeps it with the document.
    setCursorWidth(0);
    m_read = nullptr;
    delete former;
    move(x(), oldtop);
    m_isAway = false;
    verticalScrollBar()->setValue(0);
    return true;
}

void RtfEditField::WriteBuffer() {
    if (buffer.isEmpty())
        return;
    if (!currentstate)
        throw NilObjectError(QStringLiteral("Text without a look."));
    if (m_isLookStale)
        setLook(*currentstate);
    m_isLookStale = false;
    const QString text = RtfEncoding::toText(buffer);
    buffer.clear();
    if (currentstate->smallcapitals)
        writeSmallCapitals(text);
    else
        m_insertion.setSelText(currentstate->capitals ? upperCase(text) : text);
}

// Runs of small letters and of others, which is the same as letter by letter.
void RtfEditField::writeSmallCapitals(const QString& text) {
    for (qsizetype from = 0; from < text.size();) {
        const bool isSmall = isSmallLetter(text, from);
        qsizetype end = from + 1;
        while (end < text.size() && isSmallLetter(text, end) == isSmall)
            ++end;
        const QString run = text.mid(from, end - from);
        from = end;
        if (!isSmall) {
            m_insertion.setSelText(run);
            continue;
        }
        const int size = static_cast<int>(m_insertion.SelTextSize());
        m_insertion.setSelTextSize(std::ceil(size * SmallCapital));
        m_insertion.setSelText(upperCase(run));
        m_insertion.setSelTextSize(size);
        m_isLookStale = true;
    }
}

std::optional<RtfState> RtfEditField::GetState() const {
    if (m_insertion.isNull())
        return std::nullopt;
    RtfState state;
    state.font = m_insertion.SelTextFont();
    state.textsize = m_insertion.SelTextSize();
    state.foregroundcolor = m_insertion.SelTextColor();
    state.bold = m_insertion.SelBold();
    state.italic = m_insertion.SelItalic();
    state.underline = m_insertion.SelUnderline();
    if (m_insertion.SelExtend())
        state.expanded = WideSpacing;
    else if (m_insertion.SelCondense())
        state.expanded = -WideSpacing;
    state.outline = m_insertion.SelOutline();
    state.shadow = m_insertion.SelShadow();
    state.alignment = m_insertion.SelAlignment();
    return state;
}

bool RtfEditField::StyleChanged(const RtfState& state) const {
    if (state.font.compare(m_insertion.SelTextFont(), Qt::CaseInsensitive) != 0 ||
        state.textsize != m_insertion.SelTextSize() || state.foregroundcolor != m_insertion.SelTextColor() ||
        state.bold != m_insertion.SelBold() || state.italic != m_insertion.SelItalic() ||
        state.underline != m_insertion.SelUnderline() || state.outline != m_insertion.SelOutline() ||
        state.shadow != m_insertion.SelShadow())
        return true;
    const int expanded = static_cast<int>(state.expanded);
    const bool isWide = m_insertion.SelExtend();
    const bool isClose = m_insertion.SelCondense();
    // Any other spacing is passed over.
    if ((expanded == WideSpacing && !isWide) || (expanded == -WideSpacing && !isClose) ||
        (expanded == 0 && (isWide || isClose)))
        return true;
    const bool isLeft = m_insertion.SelAlignment() == RtfAlignment::Left;
    return state.alignment != m_insertion.SelAlignment() &&
           (state.alignment != RtfAlignment::Justified || !isLeft);
}

Task<> RtfEditField::Export(RtfTarget& target) {
    if (progress)
        progress->setMaximum(FullProgress);
    if (!target.Preprocess())
        co_return;
    // As it stands: toPlainText would turn hard blanks into common ones.
    const QByteArray text = RtfEncoding::fromText(
        document()->toRawText().replace(QChar::ParagraphSeparator, QChar::CarriageReturn));
    std::optional<RtfState> st;
    const int length = static_cast<int>(text.size());
    for (int i = 1; i <= std::max(length, 1); ++i) {
        if (i > 1 && UserCancelled && UserCancelled())
            break;
        if (progress && i > 1 && i % ProgressStep == 0)
            progress->setValue(static_cast<int>(std::int64_t{i} * FullProgress / length));
        m_insertion.setSelStart(std::min(i, length));
        if (!st || StyleChanged(*st)) {
            st = GetState();
            if (!st) {
                co_await m_dialogs.MsgBox(QStringLiteral("st nil in rtfeditfield"));
                co_return;
            }
            target.SetState(*st);
        }
        target.Write(text.mid(i - 1, 1));
        co_await m_clock.breathe();
    }
    target.Postprocess();
}

Task<> RtfEditField::layOut() {
    TimerFilter filter;
    QAbstractTextDocumentLayout* const layout = document()->documentLayout();
    layout->installEventFilter(&filter);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        layout->blockBoundingRect(block);
        co_await m_clock.breathe();
    }
}

void RtfEditField::paintEvent(QPaintEvent* event) {
    if (m_insertion.hasPlacedShadow())
        paintShadows();
    QTextEdit::paintEvent(event);
}

// The toolkit knows no shadow: the same letters once more, aside and below the text.
void RtfEditField::paintShadows() {
    QPainter painter(viewport());
    painter.setPen(ShadowColor);
    const QPointF origin(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const qreal bottom = origin.y() + viewport()->height();
    for (QTextBlock block = cursorForPosition(QPoint(0, 0)).block(); block.isValid(); block = block.next()) {
        if (document()->documentLayout()->blockBoundingRect(block).top() > bottom)
            break;
        const QPointF place = block.layout()->position() - origin;
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (InsertionPoint::hasShadow(part.fragment().charFormat()))
                for (const QGlyphRun& letters : part.fragment().glyphRuns()) {
                    const qreal aside = letters.rawFont().pixelSize() * ShadowAside;
                    painter.drawGlyphRun(place + QPointF(aside, aside), letters);
                }
    }
}
