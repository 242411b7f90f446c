// The state of the link beside the status: a dot in a colour, and what the colour means in words.
#pragma once

#include <functional>
#include <optional>

#include <QPushButton>

#include "LinkState.h"

class LinkButton final : public QPushButton {
    Q_OBJECT

public:
    using Look = std::function<LinkState()>;

    LinkButton();

    // Shows what `look` says, from now on. The port, the sensing and the poll all have a part in the state:
    // a look twice a second costs less than being told by each.
    void watch(Clock& clock, Look look);
    void setState(const LinkState& state);

protected:
    // A flat button does not show everywhere that it has the focus.
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QIcon dot(const QColor& colour) const;

    std::optional<LinkState> m_state;
    std::optional<ClockTimer> m_look;
};
