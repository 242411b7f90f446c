// Documents read into a record of what the reader told.
#pragma once

#include <optional>

#include <QByteArray>
#include <QStringList>

#include "RtfParser.h"
#include "SimClock.h"

// Each piece of text behind its look, as "[bold #ff0000]text"; only what differs from the usual look is told.
class RecordingTarget final : public RtfTarget {
public:
    void SetState(const RtfState& state) override {
        place();
        m_look = state;
        ++states;
    }
    void Write(QByteArrayView text) override { m_buffer.append(text); }
    bool Preprocess() override { return !refuses; }
    bool Postprocess() override {
        place();
        isEnded = true;
        return true;
    }

    QByteArray record;
    int states = 0;
    bool isEnded = false;
    bool refuses = false;

private:
    void place() {
        if (m_buffer.isEmpty())
            return;
        const QByteArray look = described(m_look);
        if (look != m_recorded)
            record += '[' + look + ']';
        m_recorded = look;
        record += m_buffer;
        m_buffer.clear();
    }

    static QByteArray described(const RtfState& state) {
        static const RtfState usual;
        QByteArray look;
        const auto tell = [&look](bool differs, const QByteArray& word) {
            if (differs)
                look += (look.isEmpty() ? "" : " ") + word;
        };
        tell(state.bold, "bold");
        tell(state.italic, "italic");
        tell(state.underline, "underline");
        tell(state.outline, "outline");
        tell(state.shadow, "shadow");
        tell(state.capitals, "capitals");
        tell(state.smallcapitals, "smallcapitals");
        tell(state.font != usual.font, state.font);
        tell(state.textsize != usual.textsize, QByteArray::number(state.textsize, 'g', 4));
        tell(state.foregroundcolor != usual.foregroundcolor, hex(state.foregroundcolor));
        tell(state.backgroundcolor.has_value(), "on " + hex(state.backgroundcolor.value_or(RtfRgb{})));
        tell(state.expanded != 0, "expanded " + QByteArray::number(state.expanded));
        tell(state.alignment != usual.alignment,
             "align " + QByteArray::number(static_cast<int>(state.alignment)));
        return look;
    }

    static QByteArray hex(RtfRgb color) {
        const char parts[] = {static_cast<char>(color.red), static_cast<char>(color.green),
                              static_cast<char>(color.blue)};
        return '#' + QByteArray(parts, 3).toHex();
    }

    RtfState m_look;
    QByteArray m_buffer;
    QByteArray m_recorded;
};

// Reads a document on a simulated clock.
struct Reading {
    explicit Reading(const QByteArray& document, bool refuses = false) : stream(document, clock) {
        target.refuses = refuses;
        Task<RtfParser::Ending> flow = parser.Parse(stream, target);
        isDone = clock.run(flow);
        if (isDone)
            ending = flow.result();
    }

    SimClock clock;
    InstalledFonts installed{{QStringLiteral("Arial"), QStringLiteral("Times"), QStringLiteral("Courier")}};
    RtfParser parser{clock, installed};
    RtfStream stream;
    RecordingTarget target;
    bool isDone = false;
    std::optional<RtfParser::Ending> ending;
};

inline QByteArray recordOf(const QByteArray& document) {
    return Reading(document).target.record;
}
