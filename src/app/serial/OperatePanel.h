// The controls of the "Operate" tab that the status monitor and the operating controls drive.
#pragma once

#include <QString>

class OperatePanel {
public:
    // By their place on the panel.
    enum class ReadOut { PAVoltage, PACurrent, Temperature, Band, Power, SWR };
    enum class Mode { Standby, Operate, Other };

    static constexpr int BandCount = 11;

    OperatePanel() = default;
    OperatePanel(const OperatePanel&) = delete;
    OperatePanel& operator=(const OperatePanel&) = delete;
    virtual ~OperatePanel() = default;

    virtual void setReadOut(ReadOut readOut, const QString& text) = 0;
    // Empty when there is no fault.
    virtual void setCurrentFault(const QString& shortName) = 0;
    // Which of Stby and Oper is lit, and what OperStby offers. Other: neither, and nothing offered.
    virtual void setMode(Mode mode) = 0;
    // Enlarges the button of this band, 0 to 10, and no other; its caption is the band in MHz.
    virtual void markBand(int band) = 0;
    virtual QString bandCaption(int band) const = 0;
    // Captions double as state: they decide what the button does next.
    virtual QString onOffCaption() const = 0;
    virtual void setOnOffCaption(const QString& caption) = 0;
    virtual QString operStbyCaption() const = 0;
    // The read-outs with their labels, the two groups, Oper, Stby and OperStby.
    virtual void enableReadOuts(bool enabled) = 0;
    virtual void enableOnOff(bool enabled) = 0;
    // Read-outs, lamps and the mark of the band look old, or live again.
    virtual void setDim(bool isDim) = 0;
};
