// The controls of the help window, by their names.
#pragma once

class NavButton;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;
class QToolButton;
class QTreeWidget;
class QWidget;

// Owned by the window that they are made in, and placed by Divider. The page view is added when the book
// opens.
struct HelpControls {
    explicit HelpControls(QWidget& window);

    QWidget* TopNavSpacer;
    QWidget* TopNavBar;
    NavButton* BtnContents;
    NavButton* BtnIndex;
    NavButton* BtnSearch;
    NavButton* BtnBack;
    NavButton* BtnNext;
    NavButton* BtnHistory;
    NavButton* BtnHome;
    NavButton* BtnPrint;
    QStackedWidget* HelpTabs;
    QTreeWidget* HelpList;
    QLineEdit* IndexField;
    QListWidget* IndexList;
    QLineEdit* SearchField;
    QToolButton* SearchBtn;
    QListWidget* SearchList;
    NavButton* BtnUp;
    NavButton* BtnDown;
    NavButton* BtnSmaller;
    NavButton* BtnLarger;
    NavButton* BtnCollapse;
    NavButton* BtnExpand;
    QWidget* VertGrabber;
    QLabel* StatusLabel;
    QWidget* HelpView = nullptr;
};
