// Where the controls of the help window stand: the pane on the left, the page on the right, and the divider.
#pragma once

#include <optional>

#include <QPoint>
#include <QSize>

struct HelpControls;

// Where the divider goes when the pointer drags it to `x` in a window of that width; nothing when it stays.
std::optional<int> dividerFor(int x, int windowWidth);

class Divider {
public:
    static constexpr int DesignX = 230;
    static constexpr QSize DesignSize{700, 400};

    explicit Divider(HelpControls& controls) : m_controls(controls) {}

    // Gives every control its designed place.
    void placeAll(QSize window);
    // The window has another size.
    void resize(QSize window);
    // Event_MouseDrag.
    void drag(int x, QSize window);
    // Whether a point of the window lies on the divider.
    bool IsCursorGrabbing(QPoint point, QSize window) const;

private:
    void layOutAt(int x, int windowWidth);

    HelpControls& m_controls;
    int m_x = DesignX;
    int m_statusMargin = 15;  // right of StatusLabel
};
