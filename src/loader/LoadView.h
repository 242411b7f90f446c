// What a firmware load shows besides its log.
#pragma once

#include <chrono>

#include <QString>

class LoadView {
public:
    LoadView() = default;
    LoadView(const LoadView&) = delete;
    LoadView& operator=(const LoadView&) = delete;
    virtual ~LoadView() = default;

    // A maximum of 0 makes the bar an indeterminate one.
    virtual void setProgressBar1Maximum(int maximum) = 0;
    // Values past the maximum show a full bar.
    virtual void setProgressBar1Value(int value) = 0;
    // Tells of a long wait and counts its time down, in a line of its own; an empty text takes it away.
    virtual void showLongWait(const QString& what, std::chrono::seconds left) = 0;
};
