#include "HelpControls.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "Naming.h"
#include "NavButton.h"
#include "Pictures.h"

namespace {

NavButton* button(QWidget& window, const QString& name, const QString& helpTag, const NavPictures& pictures) {
    auto* result = named(new NavButton(pictures, &window), name, helpTag);
    result->setToolTip(helpTag);
    return result;
}

NavButton* tabButton(QWidget& window, const QString& name, const QString& helpTag,
                     const NavPictures& pictures) {
    NavButton* result = button(window, name, helpTag, pictures);
    result->setCheckable(true);
    return result;
}

NavButton* smallButton(QWidget& window, const QString& name, const QString& helpTag, const QString& picture) {
    return button(window, name, helpTag, {.picture = picture, .livePicture = {}, .mask = {}});
}

QLabel* grabber(QWidget& window) {
    auto* result = named(new QLabel(&window), QStringLiteral("VertGrabber"), QObject::tr("Divider"));
    result->setPixmap(Pictures::icon(QStringLiteral("grabber")).pixmap(QSize(3, 24), 2));
    result->setCursor(Qt::SplitHCursor);
    return result;
}

QLabel* statusLabel(QWidget& window) {
    auto* result = named(new QLabel(&window), QStringLiteral("StatusLabel"), QObject::tr("Status"));
    result->setTextFormat(Qt::PlainText);
    const bool isDarkGround = result->palette().color(QPalette::Window).lightness() < 128;
    QPalette palette = result->palette();
    palette.setColor(QPalette::WindowText, isDarkGround ? QColor(0xaaaaaa) : QColor(0x666666));
    result->setPalette(palette);
    return result;
}

QTreeWidget* contentsList() {
    auto* result = named(new QTreeWidget, QStringLiteral("HelpList"), QObject::tr("Contents"));
    result->setHeaderHidden(true);
    result->setUniformRowHeights(true);
    result->setExpandsOnDoubleClick(false);
    return result;
}

QListWidget* list(const QString& name, const QString& accessibleName) {
    auto* result = named(new QListWidget, name, accessibleName);
    result->setUniformItemSizes(true);
    return result;
}

// One panel of HelpTabs, holding its controls.
void addPanel(QStackedWidget& tabs, std::initializer_list<QWidget*> controls) {
    auto* panel = new QWidget;
    for (QWidget* control : controls)
        control->setParent(panel);
    tabs.addWidget(panel);
}

}  // namespace

HelpControls::HelpControls(QWidget& window)
    : TopNavSpacer(named(new NavGround(&window), QStringLiteral("TopNavSpacer"), QString())),
      TopNavBar(named(new NavGround(&window), QStringLiteral("TopNavBar"), QString())),
      BtnContents(tabButton(window, QStringLiteral("BtnContents"), QStringLiteral("Contents"),
                            {QStringLiteral("bookblue"), {}, QStringLiteral("contentsmask")})),
      BtnIndex(tabButton(window, QStringLiteral("BtnIndex"), QStringLiteral("Index"),
                         {QStringLiteral("navindex"), {}, QStringLiteral("navindexmask")})),
      BtnSearch(tabButton(window, QStringLiteral("BtnSearch"), QStringLiteral("Search"),
                          {QStringLiteral("navsearch"), {}, QStringLiteral("navsearchmask")})),
      BtnBack(
          button(window, QStringLiteral("BtnBack"), QStringLiteral("Go Back in the History"),
                 {QStringLiteral("navback"), QStringLiteral("navbackcr"), QStringLiteral("navbackmask")})),
      BtnNext(
          button(window, QStringLiteral("BtnNext"), QStringLiteral("Go Forward in the History"),
                 {QStringLiteral("navnext"), QStringLiteral("navnextcr"), QStringLiteral("navnextmask")})),
      BtnHistory(button(
          window, QStringLiteral("BtnHistory"), QStringLiteral("History List"),
          {QStringLiteral("navhistory"), QStringLiteral("navhistorycr"), QStringLiteral("navhistorymask")})),
      BtnHome(button(window, QStringLiteral("BtnHome"), QStringLiteral("Go to the Home Page"),
                     {QStringLiteral("navhome"), {}, QStringLiteral("navhomemask")})),
      BtnPrint(button(window, QStringLiteral("BtnPrint"), QStringLiteral("Print the Selected Page"),
                      {QStringLiteral("navprint"), {}, QStringLiteral("navprintmask")})),
      HelpTabs(named(new QStackedWidget(&window), QStringLiteral("HelpTabs"), QString())),
      HelpList(contentsList()),
      IndexField(named(new QLineEdit, QStringLiteral("IndexField"), QObject::tr("Find in the index"))),
      IndexList(list(QStringLiteral("IndexList"), QObject::tr("Index"))),
      SearchField(named(new QLineEdit, QStringLiteral("SearchField"), QObject::tr("Search the help"))),
      SearchBtn(named(new QToolButton, QStringLiteral("SearchBtn"), QStringLiteral("Find"))),
      SearchList(list(QStringLiteral("SearchList"), QObject::tr("Search results"))),
      BtnUp(smallButton(window, QStringLiteral("BtnUp"), QStringLiteral("Select the Previous Topic"),
                        QStringLiteral("navlstup"))),
      BtnDown(smallButton(window, QStringLiteral("BtnDown"), QStringLiteral("Select the Next Topic"),
                          QStringLiteral("navlstdown"))),
      BtnSmaller(smallButton(window, QStringLiteral("BtnSmaller"), QStringLiteral("Make List Text Smaller"),
                             QStringLiteral("navtssmall"))),
      BtnLarger(smallButton(window, QStringLiteral("BtnLarger"), QStringLiteral("Make List Text Bigger"),
                            QStringLiteral("navtslarge"))),
      BtnCollapse(smallButton(window, QStringLiteral("BtnCollapse"), QStringLiteral("Collapse Contents List"),
                              QStringLiteral("navlstcoll"))),
      BtnExpand(smallButton(window, QStringLiteral("BtnExpand"), QStringLiteral("Expand Contents List"),
                            QStringLiteral("navlstexp"))),
      VertGrabber(grabber(window)),
      StatusLabel(statusLabel(window)) {
    addPanel(*HelpTabs, {HelpList});
    addPanel(*HelpTabs, {IndexField, IndexList});
    addPanel(*HelpTabs, {SearchField, SearchBtn, SearchList});
    SearchBtn->setToolTip(QStringLiteral("Find"));
    SearchBtn->setIcon(Pictures::icon(QStringLiteral("navfind")));
    SearchBtn->setFocusPolicy(Qt::StrongFocus);
}
