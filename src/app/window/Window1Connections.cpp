// What each control of the main window starts, and what the services show in it.
#include <QTabWidget>

#include "ConfigurationTab.h"
#include "LogField.h"
#include "Services.h"
#include "ValueLabel.h"
#include "Window1.h"

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
    connect(m_commandTesterTab, &CommandTesterTab::statusTold, this,
            [&services](const QString& text) { services.globals.showStatus(text); });
    Serial1.DataAvailable = [this] { Serial1_DataAvailable(); };
    Serial1.Lost = [&services](const QString& reason) {
        services.monitor.portLost();
        services.flows.start(services.ports.Serial1_Lost(reason));
    };
    services.globals.DisplayStatus = [this](const QString& text) { DisplayStatus->setValue(text); };
    services.line.Changed = [this](bool isTaken) { lock(isTaken); };
}

void Window1::detach() {
    Serial1.DataAvailable = {};
    Serial1.Lost = {};
    m_services->line.Changed = {};
    m_services->globals.StatusField = {};
    m_services->globals.DisplayStatus = {};
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
    connect(m_firmwareTab, &FirmwareTab::ImagesButton_Action, this,
            [&s] { s.flows.start(s.sendFirmware.ImagesButton_Action()); });
    connect(m_firmwareTab, &FirmwareTab::imageChosen, this, [this, &s](const QString& name) {
        startAlone([&s, name] { return s.sendFirmware.sendImage(name); });
    });
    connect(m_firmwareTab, &FirmwareTab::GetRevButton1_Action, this,
            [&s] { s.flows.start(s.retrieval.GetRevButton1_Action()); });
    connect(m_firmwareTab, &FirmwareTab::CopyWithCurl_Action, this,
            [&s] { s.flows.start(s.retrieval.CopyWithCurl_Action()); });
    connect(m_firmwareTab, &FirmwareTab::GiveUpCopying_Action, this, [&s] { s.retrieval.giveUp(); });
    s.globals.StatusField = [this](const QString& line) { m_firmwareTab->statusField().appendMessage(line); };
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
    connect(m_menu.ViewPortByName, &QAction::triggered, this,
            [this](bool isWanted) { m_services->ports.ViewPortByName_Action(isWanted); });
    connect(m_menu.ViewTraceMenu, &QAction::triggered, this, &Window1::_ViewTraceMenu_Action);
    connect(m_menu.HelpAboutVLXUtil, &QAction::triggered, this, &Window1::_HelpAboutVLXUtil_Action);
}
