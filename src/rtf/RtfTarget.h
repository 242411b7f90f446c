// Receives a document as a sequence of looks and pieces of text.
#pragma once

#include <QByteArray>

#include "RtfState.h"

class RtfTarget {
public:
    RtfTarget() = default;
    RtfTarget(const RtfTarget&) = delete;
    RtfTarget& operator=(const RtfTarget&) = delete;
    virtual ~RtfTarget() = default;

    // From now on, text has this look.
    virtual void SetState(const RtfState& state) = 0;
    // Text to add, in Mac Roman; Chr(13) ends a paragraph.
    virtual void Write(QByteArrayView text) = 0;
    // Before the first byte; false stops the reader.
    virtual bool Preprocess() = 0;
    // After the last byte.
    virtual bool Postprocess() = 0;
};

// Shows how far a document is, from 0 to its maximum.
class ProgressBar {
public:
    ProgressBar() = default;
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    virtual ~ProgressBar() = default;

    virtual void setMaximum(int maximum) = 0;
    virtual void setValue(int value) = 0;
};
