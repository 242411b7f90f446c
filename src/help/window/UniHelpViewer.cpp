#include "UniHelpViewer.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "NavButton.h"

namespace {

constexpr QSize SmallestSize{400, 200};
constexpr QSize LargestSize{32000, 32000};
constexpr int SmallestFont = 9;
constexpr int LargestFont = 16;
constexpr int UsualFont = 11;

QList<QWidget*> textControls(const HelpControls& c) {
    return {c.HelpList, c.IndexList, c.SearchList, c.StatusLabel, c.IndexField, c.SearchField};
}

}  // namespace

UniHelpViewer::UniHelpViewer(UniHelpGlobals& globals, HTMLViewerLibrary& library)
    : m_globals(globals),
      m_library(library),
      c(*this),
      m_divider(c),
      m_dialogs(globals.clock, globals.errorHandler()),
      m_search(globals.clock, globals.errorHandler()) {
    setObjectName(QStringLiteral("UniHelpViewer"));
    setMinimumSize(SmallestSize);
    setMaximumSize(LargestSize);
    setMouseTracking(true);
    m_divider.placeAll(Divider::DesignSize);
    QWidget::resize(Divider::DesignSize);
    connectNavigation();
    connectLists();
    connectKeys();
    orderFocus();
}

UniHelpViewer::~UniHelpViewer() {
    m_search.cancelAll();
    HelpView.reset();
}

Task<bool> UniHelpViewer::CustomizeHelp(HelpSettings settings) {
    m_settings = std::move(settings);
    setWindowTitle(m_settings.title);
    if (!m_globals.UHViewerStatus(m_library.isAvailable())) {
        co_await m_globals.UHError(
            QStringLiteral("The WebKit library required by the HTML Help Viewer is not installed."));
        co_return false;
    }
    if (!m_settings.HelpFolder.Exists()) {
        co_await m_globals.UHError(
            QStringLiteral(
                "The \"%1\" folder is missing! This folder must remain in the same directory as the "
                "application.")
                .arg(m_settings.HelpFolder.Name()));
        co_return false;
    }
    SetFontName(m_settings.FontName);
    SetFontSize(m_settings.FontSize);
    c.BtnPrint->setEnabled(m_settings.ShowPrintButton);
    c.BtnPrint->setVisible(m_settings.ShowPrintButton);
    // Both are read, so that both can be told to be missing.
    const bool hasContents = co_await LoadTOC();
    const bool hasIndex = co_await ListIndex();
    if (!hasContents || !hasIndex)
        co_return false;
    addHelpView();
    co_return true;
}

void UniHelpViewer::addHelpView() {
    HelpView = m_library.make(m_settings.HelpFolder, this);
    c.HelpView = HelpView->control();
    c.HelpView->setObjectName(QStringLiteral("HelpView"));
    c.HelpView->setAccessibleName(tr("Page"));
    HelpView->CancelLoad = [this](const QString& url) { return HelpView_CancelLoad(url); };
    HelpView->DocumentComplete = [this](const QString& url) { HelpView_DocumentComplete(url); };
    HelpView->StatusChanged = [this](const QString& text) { HelpView_StatusChanged(text); };
    HelpView->Error = [this](int code, const QString& text) { HelpView_Error(code, text); };
    setTabOrder(c.BtnExpand, c.HelpView);
    m_divider.placeAll(size());
}

void UniHelpViewer::Show() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect room = screen->availableGeometry();
        move(room.center() - rect().center());
    }
    show();
    activateWindow();
}

void UniHelpViewer::setRectangle(const QRect& rectangle) {
    move(rectangle.topLeft());
    QWidget::resize(rectangle.size());
}

void UniHelpViewer::orderFocus() {
    const QList<QWidget*> order{c.BtnContents, c.BtnIndex,    c.BtnSearch, c.BtnBack,     c.BtnNext,
                                c.BtnHistory,  c.BtnHome,     c.BtnPrint,  c.HelpList,    c.IndexField,
                                c.IndexList,   c.SearchField, c.SearchBtn, c.SearchList,  c.BtnUp,
                                c.BtnDown,     c.BtnSmaller,  c.BtnLarger, c.BtnCollapse, c.BtnExpand};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void UniHelpViewer::connectNavigation() {
    connect(c.BtnContents, &NavButton::clicked, this, [this] { TabSelected(Tab::Contents); });
    connect(c.BtnIndex, &NavButton::clicked, this, [this] { TabSelected(Tab::Index); });
    connect(c.BtnSearch, &NavButton::clicked, this, [this] { TabSelected(Tab::Search); });
    connect(c.HelpTabs, &QStackedWidget::currentChanged, c.StatusLabel, &QLabel::clear);
    connect(c.BtnBack, &NavButton::clicked, this, [this] { showFromHistory(m_history.goBack()); });
    connect(c.BtnNext, &NavButton::clicked, this, [this] { showFromHistory(m_history.goNext()); });
    connect(c.BtnHistory, &NavButton::clicked, this, &UniHelpViewer::ShowUHistoryMenu);
    connect(c.BtnHome, &NavButton::clicked, this, &UniHelpViewer::BtnHome_Action);
    connect(c.BtnPrint, &NavButton::clicked, this, [this] { m_globals.UHPrint(); });
    connect(c.BtnUp, &NavButton::clicked, this, [this] { stepInList(-1); });
    connect(c.BtnDown, &NavButton::clicked, this, [this] { stepInList(1); });
    connect(c.BtnSmaller, &NavButton::clicked, this, [this] {
        if (listFontSize() > SmallestFont)
            SetFontSize(listFontSize() - 1);
    });
    connect(c.BtnLarger, &NavButton::clicked, this, [this] {
        if (listFontSize() < LargestFont)
            SetFontSize(listFontSize() + 1);
    });
    connect(c.BtnCollapse, &NavButton::clicked, this, [this] { setAllExpanded(false); });
    connect(c.BtnExpand, &NavButton::clicked, this, [this] { setAllExpanded(true); });
    paintHistoryButtons();
}

void UniHelpViewer::connectKeys() {
    const auto key = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    key(QKeySequence(Qt::CTRL | Qt::Key_W), [this] { close(); });
    key(QKeySequence(Qt::Key_Escape), [this] { m_search.cancelAll(); });
    key(QKeySequence::Back, [this] { c.BtnBack->click(); });
    key(QKeySequence::Forward, [this] { c.BtnNext->click(); });
    key(QKeySequence::Find, [this] {
        TabSelected(Tab::Search);
        c.SearchField->selectAll();
    });
}

void UniHelpViewer::TabSelected(Tab tab) {
    c.HelpTabs->setCurrentIndex(static_cast<int>(tab));
    c.BtnContents->setChecked(tab == Tab::Contents);
    c.BtnIndex->setChecked(tab == Tab::Index);
    c.BtnSearch->setChecked(tab == Tab::Search);
    for (NavButton* button : {c.BtnCollapse, c.BtnExpand}) {
        button->setEnabled(tab == Tab::Contents);
        button->setVisible(tab == Tab::Contents);
    }
    if (tab == Tab::Search)
        c.SearchField->setFocus();
}

UniHelpViewer::Tab UniHelpViewer::currentTab() const {
    return static_cast<Tab>(c.HelpTabs->currentIndex());
}

void UniHelpViewer::SetFontSize(int size) {
    for (QWidget* control : textControls(c)) {
        QFont font = control->font();
        font.setPixelSize(size >= SmallestFont && size <= LargestFont ? size : UsualFont);
        control->setFont(font);
    }
}

int UniHelpViewer::listFontSize() const {
    return c.StatusLabel->font().pixelSize();
}

void UniHelpViewer::SetFontName(const QString& name) {
    const QStringList installed = QFontDatabase::families();
    for (QWidget* control : textControls(c)) {
        QFont font = control->font();
        if (installed.contains(name, Qt::CaseInsensitive))
            font.setFamily(name);
        else if (installed.contains(m_settings.AltFont, Qt::CaseInsensitive))
            font.setFamily(m_settings.AltFont);
        else
            font.setFamily(QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
        control->setFont(font);
    }
}

void UniHelpViewer::rememberRectangle() {
    m_globals.UHelpLeft = x();
    m_globals.UHelpTop = y();
    m_globals.UHelpWidth = width();
    m_globals.UHelpHeight = height();
}

void UniHelpViewer::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        rememberRectangle();
}

void UniHelpViewer::closeEvent(QCloseEvent* event) {
    m_search.cancelAll();
    rememberRectangle();
    event->accept();
    m_globals.UHClosed();
    if (Closed)
        Closed();
}

void UniHelpViewer::resizeEvent(QResizeEvent* /*event*/) {
    m_divider.resize(size());
}

void UniHelpViewer::mousePressEvent(QMouseEvent* event) {
    m_isDragging = m_divider.IsCursorGrabbing(event->position().toPoint(), size());
}

void UniHelpViewer::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_isDragging)
        m_divider.drag(point.x(), size());
    else if (m_divider.IsCursorGrabbing(point, size()))
        setCursor(Qt::SplitHCursor);
    else
        unsetCursor();
}

void UniHelpViewer::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_isDragging = false;
}

bool UniHelpViewer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == c.HelpList && event->type() == QEvent::KeyPress)
        HelpList_KeyDown(static_cast<QKeyEvent*>(event)->key());
    return QWidget::eventFilter(watched, event);
}

// Behind the divider and the small buttons.
void UniHelpViewer::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), palette().color(QPalette::Window));
}
