#include "Window1.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "AboutWindow.h"
#include "CommandMacroWin.h"
#include "CommandSet.h"
#include "ConfigurationTab.h"
#include "LogField.h"
#include "Naming.h"
#include "Placement.h"
#include "Services.h"
#include "ValueLabel.h"

namespace {

constexpr QSize DesignSize(615, 540);

// A page that is larger than the window, because of a large font or a small screen, scrolls.
QScrollArea* inReach(QWidget* page) {
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    // The page looks as it would without the area.
    page->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

}  // namespace

Window1::Window1(Platform& platform, Macros& macros)
    : m_macros(macros),
      Serial1(platform.Serial1),
      m_menu(*menuBar()),
      TabPanel1(named(new QTabWidget, QStringLiteral("TabPanel1"), tr("Tabs"))),
      m_portTab(new PortTab),
      m_firmwareTab(new FirmwareTab),
      m_operateTab(new OperateTab(platform.clock)),
      m_configurationTab(new ConfigurationTab),
      m_commandTesterTab(new CommandTesterTab(platform.clock, platform.Serial1, macros)),
      DisplayStatus(
          named(new ValueLabel(tr("Status"), QStringLiteral("Ready")), QStringLiteral("DisplayStatus"))),
      m_linkState(new LinkButton),
      m_pages(std::to_array<Page>({
          {QStringLiteral("&Port"), m_portTab, &Window1::enterPort},
          {QStringLiteral("Fir&mware"), m_firmwareTab, &Window1::enterFirmware},
          {QStringLiteral("&Operate"), m_operateTab, &Window1::enterOperate},
          {QStringLiteral("&Configuration"), m_configurationTab, &Window1::enterConfiguration},
          {QStringLiteral("Command &Tester"), m_commandTesterTab, &Window1::enterCommandTester},
      })) {
    setObjectName(QStringLiteral("Window1"));
    setMinimumSize(DesignSize);
    for (const Page& page : m_pages)
        TabPanel1->addTab(inReach(page.widget), page.caption);

    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->addWidget(TabPanel1, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(DisplayStatus, 1);
    bottom->addWidget(m_linkState);
    rows->addLayout(bottom);
    setCentralWidget(content);
}

Window1::~Window1() = default;

void Window1::startAlone(std::function<Task<>()> flow) {
    if (!m_services->line.isTaken())
        m_services->flows.start(ownLine(std::move(flow)));
}

Task<> Window1::ownLine(std::function<Task<>()> flow) {
    const auto guard = m_services->line.take();
    co_await flow();
}

void Window1::setTab(int tab) {
    TabPanel1->setCurrentIndex(tab);
}

void Window1::lock(bool isLocked) {
    // A disabled control loses the focus: it comes back where the user left it.
    if (isLocked)
        m_focusedBeforeLock = focusWidget();
    for (int tab = 0; tab < TabPanel1->count(); ++tab)
        TabPanel1->setTabEnabled(tab, !isLocked || tab == TabPanel1->currentIndex());
    m_portTab->setEnabled(!isLocked);
    m_firmwareTab->lock(isLocked);
    m_configurationTab->setEnabled(!isLocked);
    if (!isLocked && m_focusedBeforeLock)
        m_focusedBeforeLock->setFocus();
}

void Window1::setEditBannerButtonEnabled(bool enabled) {
    m_configurationTab->setEditBannerButtonEnabled(enabled);
}

void Window1::TabPanel1_Change(int tab) {
    m_services->globals.m_TabPanel = tab;
    m_services->monitor.stopPoll();
    if (Serial1.isOpen())
        m_services->globals.showStatus(QString());
    (this->*m_pages.at(static_cast<std::size_t>(tab)).enter)();
}

void Window1::enterFirmware() {
    m_firmwareTab->setSendVLXButtonEnabled(!m_services->globals.isUnknown());
    m_firmwareTab->statusField().setFocus();
}

// Wherever the toolkit has put the focus on the new page: a key pressed by habit must not press a button
// there.
void Window1::moveFocusToPage(QWidget& page) {
    const QWidget* const focused = focusWidget();
    const QWidget* const area = TabPanel1->currentWidget();
    if (focused && (focused == area || area->isAncestorOf(focused)))
        page.setFocus();
}

void Window1::enterPort() {
    moveFocusToPage(*m_portTab);
}

void Window1::enterOperate() {
    moveFocusToPage(*m_operateTab);
    m_services->monitor.enterOperateTab();
}

void Window1::enterConfiguration() {
    moveFocusToPage(*m_configurationTab);
    m_configurationTab->enableTools(m_services->globals.isMain());
}

void Window1::enterCommandTester() {
    moveFocusToPage(*m_commandTesterTab);
    m_commandTesterTab->enterTab(!m_services->globals.isUnknown());
}

void Window1::Serial1_DataAvailable() {
    const Services& s = *m_services;
    if (s.window.mStartup || s.line.isTaken())
        return;
    const Tab tab{s.globals.m_TabPanel};
    if (tab == Tab::Operate)
        s.monitor.takeReceived();
    else if (tab == Tab::CommandTester && !s.window.mEditingMacros)
        m_commandTesterTab->takeReceived();
    // On every other tab the bytes stay in the port for the flow that reads next.
}

void Window1::EnterHiddenCommandMode() {
    Serial1.Write(Command::EnterHiddenMode);
}

void Window1::LeaveHiddenCommandMode() {
    Serial1.Write(Command::LeaveHiddenMode);
}

CommandMacroWin* Window1::openMacroEditor() {
    auto* editor = new CommandMacroWin(m_services->platform.dialogs, m_macros, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    connect(editor, &CommandMacroWin::saved, m_commandTesterTab, &CommandTesterTab::showMacroCaptions);
    return editor;
}

void Window1::EditMacrosButton_Action() {
    CommandMacroWin* editor = openMacroEditor();
    placeBelowTop(*editor, *this);
    editor->open();
}

void Window1::_EditCommandMacros_Action() {
    openMacroEditor()->show();
}

void Window1::_ViewTraceMenu_Action() {
    const Services& s = *m_services;
    if (s.window.mStartup)
        m_menu.ViewTraceMenu->setChecked(s.globals.m_Verbose);
    else
        s.globals.m_Verbose = m_menu.ViewTraceMenu->isChecked();
}

void Window1::_HelpAboutVLXUtil_Action() {
    auto* about = new AboutWindow(this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
}

// Where no control with the focus has taken the key.
void Window1::keyPressEvent(QKeyEvent* event) {
    if (static_cast<Tab>(m_services->globals.m_TabPanel) != Tab::Firmware ||
        !m_firmwareTab->Event_KeyDown(*event))
        QMainWindow::keyPressEvent(event);
}

void Window1::closeEvent(QCloseEvent* event) {
    if (mayClose && !mayClose()) {
        event->ignore();
        return;
    }
    Q_EMIT Event_Close();
    QMainWindow::closeEvent(event);
}
