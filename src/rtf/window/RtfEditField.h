// A text area that shows an RTF document.
#pragma once

#include <functional>
#include <optional>

#include <QTextEdit>

#include "Clock.h"
#include "Dialogs.h"
#include "InsertionPoint.h"
#include "RtfTarget.h"
#include "Task.h"

// While a document is read the field is out of sight, below its window, and what is read goes into a
// document of its own that nothing lays out. A reader that stops before Postprocess leaves the field there.
// Pictures, objects, fields and links have no part in it: nothing is ever fetched or run.
class RtfEditField final : public QTextEdit, public RtfTarget {
    Q_OBJECT

public:
    RtfEditField(Clock& clock, Dialogs& dialogs, QWidget* parent);

    void SetState(const RtfState& state) override;
    void Write(QByteArrayView text) override;
    bool Preprocess() override;
    bool Postprocess() override;

    // Places what has gathered. Throws NilObjectError before the first Preprocess or SetState.
    void WriteBuffer();

    // Replays the field's text with its looks into another target. Both must outlive the task.
    Task<> Export(RtfTarget& target);
    // Whether `state` differs from the look at the insertion point.
    bool StyleChanged(const RtfState& state) const;
    // The look at the insertion point; none when there is no document.
    std::optional<RtfState> GetState() const;

    // To be called when the window's height has changed: out of sight is below its end.
    void stayAway();
    // Lays the shown document out in steps that let the window live; the toolkit's own grow too long.
    Task<> layOut();
    // The document was too long, and its end is not there.
    bool isCut() const { return m_insertion.isFull(); }

    ProgressBar* progress = nullptr;
    // Whether the user has asked to end an Export.
    std::function<bool()> UserCancelled;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void setLook(const RtfState& state);
    void writeSmallCapitals(const QString& text);
    void paintShadows();

    Clock& m_clock;
    Dialogs& m_dialogs;
    std::optional<RtfState> currentstate;
    QByteArray buffer;
    int oldtop = 0;
    bool m_isAway = false;
    // What is being read; owned by this field, as what it shows.
    QTextDocument* m_read = nullptr;
    InsertionPoint m_insertion;
    // Small capitals have left another size there than that of currentstate.
    bool m_isLookStale = true;
};
