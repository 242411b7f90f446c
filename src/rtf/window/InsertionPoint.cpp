#include "InsertionPoint.h"

#include <algorithm>
#include <iterator>

#include <QGuiApplication>
#include <QPen>
#include <QScreen>
#include <QTextDocument>

#include "RtfEncoding.h"

namespace {

enum Property {
    FontProperty = QTextFormat::UserProperty,
    SizeProperty,
    ColorProperty,
    OutlineProperty,
    ShadowProperty
};

const QByteArray System = QByteArrayLiteral("System");
// Sizes that can be shown.
constexpr double SmallestSize = 1;
constexpr double LargestSize = 288;
constexpr double PointsPerInch = 72;
// What wide letters have between them, in pixels; close ones lack it.
constexpr double Spacing = 1;

struct FontHint {
    const char* font;
    QFont::StyleHint hint;
};

// So that the toolkit takes a font of the same kind where these are not there.
constexpr FontHint Hints[] = {
    {"Times", QFont::Serif}, {"Helvetica", QFont::SansSerif}, {"Courier", QFont::TypeWriter}};

struct AlignmentPair {
    RtfAlignment alignment;
    Qt::Alignment shown;
};

constexpr AlignmentPair Alignments[] = {{RtfAlignment::Left, Qt::AlignLeft},
                                        {RtfAlignment::Centre, Qt::AlignHCenter},
                                        {RtfAlignment::Right, Qt::AlignRight},
                                        {RtfAlignment::Justified, Qt::AlignJustify}};

QColor colorOf(RtfRgb color) {
    return {color.red, color.green, color.blue};
}

}  // namespace

InsertionPoint::InsertionPoint(QTextDocument* document, const QColor& automatic)
    : m_cursor(document), m_automatic(automatic) {
    m_cursor.movePosition(QTextCursor::End);
}

void InsertionPoint::setSelStart(int position) {
    m_cursor.setPosition(position);
    // The look of the character before it, be that the end of a paragraph.
    m_look = m_cursor.atBlockStart() ? m_cursor.blockCharFormat() : m_cursor.charFormat();
    changed();
}

void InsertionPoint::setSelText(const QString& text) {
    for (qsizetype from = 0; from < text.size() && !isFull();) {
        if (text[from] == u'\r') {
            placeParagraph();
            ++from;
            continue;
        }
        if (m_paragraphLength >= LongestParagraph || m_paragraphLooks >= MostLooks)
            placeParagraph();
        const qsizetype end = text.indexOf(u'\r', from);
        const qsizetype length =
            std::min((end < 0 ? text.size() : end) - from, LongestParagraph - m_paragraphLength);
        place(text.mid(from, length));
        from += length;
    }
}

void InsertionPoint::place(const QString& text) {
    m_cursor.insertText(text, m_look);
    m_room -= text.size() + PieceCost;
    m_paragraphLength += text.size();
    m_paragraphLooks += m_isLookNew ? 1 : 0;
    m_isLookNew = false;
    m_hasPlacedShadow |= SelShadow();
}

void InsertionPoint::placeParagraph() {
    m_cursor.insertBlock(m_cursor.blockFormat(), m_look);
    m_room -= PieceCost;
    m_paragraphLength = 0;
    m_paragraphLooks = 0;
}

void InsertionPoint::setSelTextFont(const QByteArray& font) {
    for (const int property :
         {int{FontProperty}, int{QTextFormat::FontFamilies}, int{QTextFormat::FontStyleHint}})
        m_look.clearProperty(property);
    changed();
    // The system's font is that of the field.
    if (font.compare(System, Qt::CaseInsensitive) == 0)
        return;
    m_look.setProperty(FontProperty, font);
    m_look.setFontFamilies({RtfEncoding::toText(font)});
    const auto* const hint = std::ranges::find_if(
        Hints, [&font](const FontHint& known) { return font.compare(known.font, Qt::CaseInsensitive) == 0; });
    if (hint != std::end(Hints))
        m_look.setFontStyleHint(hint->hint);
}

QByteArray InsertionPoint::SelTextFont() const {
    return m_look.hasProperty(FontProperty) ? m_look.property(FontProperty).toByteArray() : System;
}

void InsertionPoint::setSelTextSize(double size) {
    const double shown = std::clamp(size, SmallestSize, LargestSize);
    m_look.setProperty(SizeProperty, shown);
    m_look.setFontPointSize(shown * PointsPerInch / QGuiApplication::primaryScreen()->logicalDotsPerInchY());
    changed();
}

double InsertionPoint::SelTextSize() const {
    return m_look.hasProperty(SizeProperty) ? m_look.doubleProperty(SizeProperty) : RtfState().textsize;
}

void InsertionPoint::setSelTextColor(RtfRgb color) {
    m_look.setProperty(ColorProperty, colorOf(color));
    colour();
}

RtfRgb InsertionPoint::SelTextColor() const {
    const QColor color = m_look.property(ColorProperty).value<QColor>();
    return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
            static_cast<std::uint8_t>(color.blue())};
}

void InsertionPoint::setSelBold(bool isOn) {
    m_look.setFontWeight(isOn ? QFont::Bold : QFont::Normal);
    changed();
}

void InsertionPoint::setSelItalic(bool isOn) {
    m_look.setFontItalic(isOn);
    changed();
}

void InsertionPoint::setSelUnderline(bool isOn) {
    m_look.setFontUnderline(isOn);
    changed();
}

void InsertionPoint::setSelOutline(bool isOn) {
    m_look.setProperty(OutlineProperty, isOn);
    colour();
}

bool InsertionPoint::SelOutline() const {
    return m_look.boolProperty(OutlineProperty);
}

// Of an outlined letter only the line has a colour.
void InsertionPoint::colour() {
    m_look.clearForeground();
    m_look.clearProperty(QTextFormat::TextOutline);
    const bool isAutomatic = SelTextColor() == RtfRgb{};
    if (SelOutline()) {
        m_look.setTextOutline(QPen(isAutomatic ? m_automatic : colorOf(SelTextColor()), 0));
        m_look.setForeground(QColor(Qt::transparent));
    } else if (!isAutomatic) {
        m_look.setForeground(colorOf(SelTextColor()));
    }
    changed();
}

void InsertionPoint::setSelShadow(bool isOn) {
    m_look.setProperty(ShadowProperty, isOn);
    changed();
}

bool InsertionPoint::hasShadow(const QTextCharFormat& look) {
    return look.boolProperty(ShadowProperty);
}

void InsertionPoint::setSelExtend(bool isOn) {
    if (isOn || SelExtend())
        space(isOn ? Spacing : 0);
}

void InsertionPoint::setSelCondense(bool isOn) {
    if (isOn || SelCondense())
        space(isOn ? -Spacing : 0);
}

void InsertionPoint::space(double pixels) {
    m_look.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    m_look.setFontLetterSpacing(pixels);
    changed();
}

// Of the whole paragraph.
void InsertionPoint::setSelAlignment(RtfAlignment alignment) {
    if (alignment == SelAlignment())
        return;
    QTextBlockFormat format = m_cursor.blockFormat();
    format.setAlignment(std::ranges::find(Alignments, alignment, &AlignmentPair::alignment)->shown);
    m_cursor.setBlockFormat(format);
}

RtfAlignment InsertionPoint::SelAlignment() const {
    const Qt::Alignment shown = m_cursor.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
    const auto* const found = std::ranges::find(Alignments, shown, &AlignmentPair::shown);
    return found == std::end(Alignments) ? RtfAlignment::Left : found->alignment;
}
