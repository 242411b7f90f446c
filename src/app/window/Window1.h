// The main window: the five tabs, the menu bar, and the handlers that tie them to the program.
#pragma once

#include <array>
#include <functional>
#include <memory>

#include <QMainWindow>
#include <QPointer>

#include "CommandTesterTab.h"
#include "ConfigurationPanel.h"
#include "FirmwareTab.h"
#include "Globals.h"
#include "LinkButton.h"
#include "MainMenu.h"
#include "OperateTab.h"
#include "Platform.h"
#include "PortTab.h"

class ConfigurationTab;
class CommandMacroWin;
class QTabWidget;
class ValueLabel;
struct Services;

class Window1 final : public QMainWindow, public ConfigurationPanel {
    Q_OBJECT

public:
    Window1(Platform& platform, Macros& macros);
    ~Window1() override;

    // Gives the window the program that its handlers call. Once, before anything else; detach before the
    // program goes.
    void attach(const Services& services);
    void detach();

    PortTab& portTab() { return *m_portTab; }
    FirmwareTab& firmwareTab() { return *m_firmwareTab; }
    OperateTab& operateTab() { return *m_operateTab; }
    ConfigurationTab& configurationTab() { return *m_configurationTab; }
    CommandTesterTab& commandTesterTab() { return *m_commandTesterTab; }
    MainMenu& menu() { return m_menu; }
    LinkButton& linkButton() { return *m_linkState; }

    // A number that names no tab chooses none.
    void setTab(int tab);
    int tabCount() const { return static_cast<int>(m_pages.size()); }
    // While a flow owns the line: the other tabs, and what would start another flow. What only shows
    // something stays in reach, the log above all.
    void lock(bool isLocked);
    void setEditBannerButtonEnabled(bool enabled) override;

    void TabPanel1_Change(int tab);
    void Serial1_DataAvailable();
    void EnterHiddenCommandMode();
    void LeaveHiddenCommandMode();

    // Asked before the window closes; when it says no, the window stays.
    std::function<bool()> mayClose;

Q_SIGNALS:
    void Event_Close();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // A tab: its caption, its page, and what entering it does.
    struct Page {
        QString caption;
        QWidget* widget;
        void (Window1::*enter)();
    };

    void enterPort();
    void enterFirmware();
    void enterOperate();
    void enterConfiguration();
    void enterCommandTester();
    void moveFocusToPage(QWidget& page);
    void connectPortTab();
    void connectFirmwareTab();
    void connectOperateTab();
    void connectConfigurationTab();
    void connectMenu();
    void EditMacrosButton_Action();
    // Starts a flow of the firmware tab, which has the line for its whole length: no second one beside it.
    void startAlone(std::function<Task<>()> flow);
    Task<> ownLine(std::function<Task<>()> flow);
    void _ViewTraceMenu_Action();
    void _HelpAboutVLXUtil_Action();
    void _FileExit_Action() { close(); }
    void _EditCommandMacros_Action();
    CommandMacroWin* openMacroEditor();

    const Services* m_services = nullptr;
    Macros& m_macros;
    SerialPort& Serial1;
    MainMenu m_menu;
    QTabWidget* TabPanel1;
    PortTab* m_portTab;
    FirmwareTab* m_firmwareTab;
    OperateTab* m_operateTab;
    ConfigurationTab* m_configurationTab;
    CommandTesterTab* m_commandTesterTab;
    ValueLabel* DisplayStatus;
    LinkButton* m_linkState;
    std::array<Page, 5> m_pages;  // by the value of Tab
    QPointer<QWidget> m_focusedBeforeLock;
};
