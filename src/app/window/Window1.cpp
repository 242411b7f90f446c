#include "Window1.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
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

namespace {

constexpr QSize DesignSize(615, 540);

}  // namespace

Window1::Window1(Platform& platform, Macros& macros)
    : m_macros(macros),
      Serial1(platform.Serial1),
      m_menu(*menuBar()),
      TabPanel1(named(new QTabWidget, QStringLiteral("TabPanel1"), tr("Tabs"))),
      m_portTab(new PortTab),
      m_firmwareTab(new FirmwareTab),
      m_operateTab(new OperateTab),
      m_configurationTab(new ConfigurationTab),
      m_commandTesterTab(new CommandTesterTab(platform.clock, platform.Serial1, macros)) {
    setObjectName(QStringLiteral("Window1"));
    setMinimumSize(DesignSize);
    TabPanel1->addTab(m_portTab, QStringLiteral("Port"));
    TabPanel1->addTab(m_firmwareTab, QStringLiteral("Firmware"));
    TabPanel1->addTab(m_operateTab, QStringLiteral("Operate"));
    TabPanel1->addTab(m_configurationTab, QStringLiteral("Configuration"));
    TabPanel1->addTab(m_commandTesterTab, QStringLiteral("Command Tester"));

    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->addWidget(TabPanel1, 1);
    rows->addWidget(
        named(new QLabel(QStringLiteral("Ready")), QStringLiteral("DisplayStatus"), tr("Status")));
    setCentralWidget(content);
}

Window1::~Window1() = default;

void Window1::attach(const Services& services) {
    m_services = &services;
    connect(TabPanel1, &QTabWidget::currentChanged, this, &Window1::TabPanel1_Change);
    connectPortTab();
    connectFirmwareTab();
    connectOperateTab();
    connectConfigurationTab();
    connectMenu();
    connect(m_commandTesterTab, &CommandTesterTab::EditMacrosButton_Action, this,
            &Window1::EditMacrosButton_Action);
    connect(m_commandTesterTab, &CommandTesterTab::bytesWait, this, &Window1::Serial1_DataAvailable);
    Serial1.DataAvailable = [this] { Serial1_DataAvailable(); };
    Serial1.Lost = [&services](const QString& reason) {
        services.flows.start(services.ports.Serial1_Lost(reason));
    };
    services.line.Changed = [this](bool isTaken) { lockTabs(isTaken); };
}

void Window1::detach() {
    Serial1.DataAvailable = {};
    Serial1.Lost = {};
    m_services->line.Changed = {};
    m_services->globals.StatusField = {};
}

void Window1::connectPortTab() {
    const Services& s = *m_services;
    connect(m_portTab, &PortTab::SerialPortMenu_Change, this,
            [&s](int index) { s.flows.start(s.ports.SerialPortMenu_Change(index)); });
    connect(m_portTab, &PortTab::serialPortMenuChosenAgain, this,
            [&s](int index) { s.flows.start(s.ports.serialPortMenuChosenAgain(index)); });
    connect(m_portTab, &PortTab::RefreshPortsButton_Action, this,
            [&s] { s.flows.start(s.ports.RefreshPortsButton_Action()); });
    connect(m_portTab, &PortTab::PortCheck_Action, this,
            [&s](bool checked) { s.flows.start(s.ports.PortCheck_Action(checked)); });
    connect(m_portTab, &PortTab::PortField_TextChange, this,
            [&s](const QString& text) { s.ports.PortField_TextChange(text); });
    connect(m_portTab, &PortTab::PortField_LostFocus, this,
            [&s] { s.flows.start(s.ports.PortField_LostFocus()); });
    connect(m_portTab, &PortTab::TestCommButtton_Action, this, [&s] {
        s.flows.start(s.versions.TestCommButtton_Action([&s] { return s.firmwareFolder.CheckNewVersion(); }));
    });
}

void Window1::connectFirmwareTab() {
    const Services& s = *m_services;
    connect(m_firmwareTab, &FirmwareTab::DefaultButton_Action, this,
            [this, &s] { startAlone([&s] { return s.firmwareFolder.DefaultButton_Action(); }); });
    connect(m_firmwareTab, &FirmwareTab::BrowseButton_Action, this,
            [this, &s] { startAlone([&s] { return s.firmwareFolder.BrowseButton_Action(); }); });
    connect(m_firmwareTab, &FirmwareTab::GetRevButton_Action, this,
            [this, &s] { startAlone([&s] { return s.firmwareFolder.GetRevButton_Action(); }); });
    connect(m_firmwareTab, &FirmwareTab::SendVLXButton_Action, this,
            [this, &s] { startAlone([&s] { return s.sendFirmware.SendVLXButton_Action(); }); });
    s.globals.StatusField = [this](const QString& line) { m_firmwareTab->statusField().appendText(line); };
}

void Window1::connectOperateTab() {
    const Services& s = *m_services;
    connect(m_operateTab, &OperateTab::OperStby_Action, this, [&s] { s.controls.OperStby_Action(); });
    connect(m_operateTab, &OperateTab::ClearCurrentFault_Action, this,
            [&s] { s.controls.ClearCurrentFault_Action(); });
    connect(m_operateTab, &OperateTab::BandSelected_Action, this,
            [&s](int band) { s.controls.BandSelected_Action(band); });
    connect(m_operateTab, &OperateTab::OnOff_Action, this, [&s] {
        // Not while the tab is still being entered: the caption is not settled until then.
        if (!s.line.isTaken() && !s.window.mStartup)
            s.flows.start(s.controls.OnOff_Action());
    });
}

void Window1::connectConfigurationTab() {
    const Services& s = *m_services;
    connect(m_configurationTab, &ConfigurationTab::SaveConfig_Action, this,
            [&s] { s.flows.start(s.memoryTools.SaveConfig_Action()); });
    connect(m_configurationTab, &ConfigurationTab::RestoreConfig_Action, this,
            [&s] { s.flows.start(s.memoryTools.RestoreConfig_Action()); });
    connect(m_configurationTab, &ConfigurationTab::DisplayFaultTable_Action, this,
            [&s] { s.flows.start(s.memoryTools.DisplayFaultTable_Action()); });
    connect(m_configurationTab, &ConfigurationTab::EditBannerButton_Action, this,
            [&s] { s.flows.start(s.memoryTools.EditBannerButton_Action()); });
}

void Window1::connectMenu() {
    connect(m_menu.FileQuit, &QAction::triggered, this, &Window1::_FileExit_Action);
    connect(m_menu.ViewTraceMenu, &QAction::triggered, this, &Window1::_ViewTraceMenu_Action);
    connect(m_menu.HelpAboutVLXUtil, &QAction::triggered, this, &Window1::_HelpAboutVLXUtil_Action);
}

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

void Window1::lockTabs(bool locked) {
    // A disabled control loses the focus: it comes back where the user left it.
    if (locked)
        m_focusedBeforeLock = focusWidget();
    for (int tab = 0; tab < TabPanel1->count(); ++tab)
        TabPanel1->setTabEnabled(tab, !locked || tab == TabPanel1->currentIndex());
    m_portTab->setEnabled(!locked);
    m_firmwareTab->setEnabled(!locked);
    if (!locked && m_focusedBeforeLock)
        m_focusedBeforeLock->setFocus();
}

void Window1::setTabPanelEnabled(bool enabled) {
    TabPanel1->setEnabled(enabled);
}

void Window1::setEditBannerButtonEnabled(bool enabled) {
    m_configurationTab->setEditBannerButtonEnabled(enabled);
}

void Window1::TabPanel1_Change(int tab) {
    const Services& s = *m_services;
    s.globals.m_TabPanel = tab;
    const bool isMain = s.globals.isMain();
    const bool answers = !s.globals.isUnknown();
    s.monitor.stopPoll();
    switch (static_cast<Tab>(tab)) {
        case Tab::CommandTester:
            m_commandTesterTab->enterTab(answers);
            break;
        case Tab::Configuration:
            m_configurationTab->enableTools(isMain);
            break;
        case Tab::Operate:
            s.monitor.enterOperateTab();
            break;
        case Tab::Firmware:
            m_firmwareTab->setSendVLXButtonEnabled(answers);
            m_firmwareTab->statusField().setFocus();
            break;
        case Tab::Port:
            break;
    }
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
    auto* editor = new CommandMacroWin(m_macros, this);
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
