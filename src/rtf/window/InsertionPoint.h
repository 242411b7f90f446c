// Where text goes into a document, and the look that it takes there.
#pragma once

#include <QTextCharFormat>
#include <QTextCursor>

#include "RtfState.h"

// The toolkit lays out a paragraph in one go, and its time grows with the square of the changes of look in
// it: beyond the limits a paragraph goes on in a new one, and the text of a document ends.
class InsertionPoint {
public:
    static constexpr qsizetype LongestParagraph = 10'000;  // characters
    static constexpr int MostLooks = 1'000;                // in one paragraph
    // What a document may hold; a piece of text costs PieceCost besides its characters, as does a paragraph.
    static constexpr qsizetype Room = 16 << 20;
    static constexpr qsizetype PieceCost = 128;

    // At the end of the document. `automatic` is the colour of an outline where the text names none.
    explicit InsertionPoint(QTextDocument* document, const QColor& automatic = {});

    bool isNull() const { return m_cursor.isNull(); }
    // Behind so many characters.
    void setSelStart(int position);
    void setSelText(const QString& text);

    void setSelTextFont(const QByteArray& font);
    QByteArray SelTextFont() const;
    // In pixels of an unscaled screen: what 12 points are to a word processor is 16 here, and as large.
    void setSelTextSize(double size);
    double SelTextSize() const;
    // Black is the automatic colour, that of the window's own text: a document's black would be lost on a
    // dark ground, and nothing tells an automatic black from another.
    void setSelTextColor(RtfRgb color);
    RtfRgb SelTextColor() const;
    void setSelBold(bool isOn);
    bool SelBold() const { return m_look.fontWeight() >= QFont::Bold; }
    void setSelItalic(bool isOn);
    bool SelItalic() const { return m_look.fontItalic(); }
    void setSelUnderline(bool isOn);
    bool SelUnderline() const { return m_look.fontUnderline(); }
    void setSelOutline(bool isOn);
    bool SelOutline() const;
    void setSelShadow(bool isOn);
    bool SelShadow() const { return hasShadow(m_look); }
    // Letters wide or close; not both.
    void setSelExtend(bool isOn);
    bool SelExtend() const { return m_look.fontLetterSpacing() > 0; }
    void setSelCondense(bool isOn);
    bool SelCondense() const { return m_look.fontLetterSpacing() < 0; }
    void setSelAlignment(RtfAlignment alignment);
    RtfAlignment SelAlignment() const;

    static bool hasShadow(const QTextCharFormat& look);
    // Text with a shadow was placed.
    bool hasPlacedShadow() const { return m_hasPlacedShadow; }
    // Text was dropped.
    bool isFull() const { return m_room <= 0; }

private:
    void colour();
    void space(double pixels);
    void place(const QString& text);
    void placeParagraph();
    void changed() { m_isLookNew = true; }

    QTextCursor m_cursor;
    QColor m_automatic;
    QTextCharFormat m_look;
    bool m_isLookNew = true;
    bool m_hasPlacedShadow = false;
    qsizetype m_room = Room;
    qsizetype m_paragraphLength = 0;
    int m_paragraphLooks = 0;
};
