// What the firmware folder and the sending of firmware need of the firmware tab beyond its labels.
#pragma once

class RetrievalView {
public:
    RetrievalView() = default;
    RetrievalView(const RetrievalView&) = delete;
    RetrievalView& operator=(const RetrievalView&) = delete;
    virtual ~RetrievalView() = default;

    virtual void setGetRevButtonEnabled(bool enabled) = 0;
    virtual void moveStatusFieldToEnd() = 0;
};
