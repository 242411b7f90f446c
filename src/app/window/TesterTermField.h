// The terminal of the command tester: what was sent in green, what came back in black.
#pragma once

#include "LogField.h"

class TesterTermField final : public LogField {
    Q_OBJECT

public:
    // An insertion point beyond this clips the text on the next arrival.
    static constexpr int ClipPosition = 32000;
    static constexpr int ClipLength = 16000;

    TesterTermField();

    // Replaces the selection, or stands at the insertion point.
    void insertSent(const QString& text);
    // Appends at the end, and leaves the insertion point there unless it holds a selection.
    void appendReceived(const QString& text);

private:
    void clip();
};
