// What the buttons of the "Operate" tab send. None waits for an answer: the poll brings the screen into
// line.
#pragma once

#include "StatusMonitor.h"

class OperatingControls {
public:
    OperatingControls(Platform& platform, Globals& globals, LineOwner& line, WindowState& window,
                      OperatePanel& panel, StatusMonitor& monitor)
        : Serial1(platform.Serial1),
          m_globals(globals),
          m_line(line),
          m_window(window),
          m_panel(panel),
          m_monitor(monitor) {}

    void OperStby_Action();
    void ClearCurrentFault_Action();
    // Band 0 to 10.
    void BandSelected_Action(int band);
    // Switches the amplifier off or on, by the caption of OnOff.
    Task<> OnOff_Action();

private:
    Task<> switchOff();
    Task<> switchOn();

    SerialPort& Serial1;
    Globals& m_globals;
    LineOwner& m_line;
    WindowState& m_window;
    OperatePanel& m_panel;
    StatusMonitor& m_monitor;
};
