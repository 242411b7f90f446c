#include "Divider.h"

#include <algorithm>
#include <array>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "HelpControls.h"
#include "NavButton.h"

namespace {

constexpr int LeftLimit = 230;
constexpr int RightLimit = 220;
constexpr int PaneTop = 44;
// Distances from the bottom edge of the window.
constexpr int PanelBelow = 400 - 44 - 331;
constexpr int ListBelow = 400 - 44 - 326;
constexpr int SmallButtonsAbove = 400 - 376;
constexpr int StatusAbove = 400 - 375;
constexpr int ViewBelow = 400 - 370;

void setWidth(QWidget& control, int width) {
    control.resize(std::max(width, 0), control.height());
}

void setHeight(QWidget& control, int height) {
    control.resize(control.width(), std::max(height, 0));
}

void setLeft(QWidget& control, int left) {
    control.move(left, control.y());
}

void setTop(QWidget& control, int top) {
    control.move(control.x(), top);
}

}  // namespace

std::optional<int> dividerFor(int x, int windowWidth) {
    if (x > LeftLimit && x < windowWidth - RightLimit)
        return x;
    if (x < LeftLimit)
        return LeftLimit;
    if (x > windowWidth - RightLimit)
        return windowWidth - RightLimit;
    return std::nullopt;
}

void Divider::placeAll(QSize window) {
    const HelpControls& c = m_controls;
    c.TopNavSpacer->setGeometry(0, 0, 240, 4);
    c.TopNavBar->setGeometry(108, 4, 132, 32);
    c.BtnContents->setGeometry(0, 4, 37, 32);
    c.BtnIndex->setGeometry(36, 4, 37, 32);
    c.BtnSearch->setGeometry(72, 4, 37, 32);
    c.BtnBack->setGeometry(117, 5, 21, 27);
    c.BtnNext->setGeometry(138, 5, 21, 27);
    c.BtnHistory->setGeometry(159, 18, 15, 14);
    c.BtnHome->setGeometry(175, 5, 27, 27);
    c.BtnPrint->setGeometry(203, 5, 27, 27);
    c.HelpTabs->setGeometry(-1, PaneTop, 232, 331);
    // Within the panels, which begin where HelpTabs begins.
    c.HelpList->setGeometry(0, 0, 231, 326);
    c.IndexField->setGeometry(6, 0, 225, 22);
    c.IndexList->setGeometry(0, 28, 231, 298);
    c.SearchField->setGeometry(6, 0, 190, 22);
    c.SearchBtn->setGeometry(201, 0, 30, 22);
    c.SearchList->setGeometry(0, 28, 231, 298);
    c.BtnUp->setGeometry(10, 376, 16, 18);
    c.BtnDown->setGeometry(26, 376, 17, 18);
    c.BtnSmaller->setGeometry(53, 376, 16, 18);
    c.BtnLarger->setGeometry(69, 376, 17, 18);
    c.BtnCollapse->setGeometry(96, 376, 16, 18);
    c.BtnExpand->setGeometry(112, 376, 17, 18);
    c.VertGrabber->setGeometry(233, 200, 3, 24);
    c.StatusLabel->setGeometry(243, 375, 442, 20);
    if (c.HelpView)
        c.HelpView->setGeometry(240, 0, 460, 370);
    resize(window);
}

void Divider::resize(QSize window) {
    const HelpControls& c = m_controls;
    setHeight(*c.HelpTabs, window.height() - PaneTop - PanelBelow);
    setHeight(*c.HelpList, window.height() - PaneTop - ListBelow);
    for (QListWidget* list : {c.IndexList, c.SearchList})
        setHeight(*list, window.height() - PaneTop - ListBelow - list->y());
    for (NavButton* button : {c.BtnUp, c.BtnDown, c.BtnSmaller, c.BtnLarger, c.BtnCollapse, c.BtnExpand})
        setTop(*button, window.height() - SmallButtonsAbove);
    setTop(*c.StatusLabel, window.height() - StatusAbove);
    setWidth(*c.StatusLabel, window.width() - c.StatusLabel->x() - m_statusMargin);
    setTop(*c.VertGrabber, window.height() / 2);
    if (c.HelpView) {
        setHeight(*c.HelpView, window.height() - ViewBelow);
        setWidth(*c.HelpView, window.width() - c.HelpView->x());
    }
}

void Divider::drag(int x, QSize window) {
    if (const auto place = dividerFor(x, window.width()))
        layOutAt(*place, window.width());
}

void Divider::layOutAt(int x, int windowWidth) {
    const HelpControls& c = m_controls;
    m_x = x;
    m_statusMargin = 16;
    setWidth(*c.HelpList, x + 1);
    setWidth(*c.SearchList, x + 1);
    setWidth(*c.IndexList, x + 1);
    setWidth(*c.SearchField, x - 40);
    // SearchBtn stands in a panel, which begins one pixel left of the window.
    setLeft(*c.SearchBtn, x - 30 + 1);
    setWidth(*c.IndexField, x - 5);
    setWidth(*c.HelpTabs, x + 2);
    setLeft(*c.VertGrabber, x + 3);
    setWidth(*c.TopNavSpacer, x + 10);
    setWidth(*c.TopNavBar, x + 10 - c.TopNavBar->x());
    setLeft(*c.StatusLabel, x + 13);
    setWidth(*c.StatusLabel, windowWidth - (x + 29));
    if (c.HelpView) {
        setLeft(*c.HelpView, x + 10);
        setWidth(*c.HelpView, windowWidth - (x + 10));
    }
}

bool Divider::IsCursorGrabbing(QPoint point, QSize window) const {
    const int pageLeft = m_controls.HelpView ? m_controls.HelpView->x() : m_x + 10;
    return point.x() > m_controls.HelpList->width() - 1 && point.x() < pageLeft && point.y() > PaneTop &&
           point.y() < window.height();
}
