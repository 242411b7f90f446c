// The "Operate" tab.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <vector>

#include <QWidget>

#include "Announcer.h"
#include "OperatePanel.h"

class Lamp;
class QGroupBox;
class QLabel;
class SendButton;
class ValueLabel;

class OperateTab final : public QWidget, public OperatePanel {
    Q_OBJECT

public:
    explicit OperateTab(Clock& clock);

    void setReadOut(ReadOut readOut, const QString& text) override;
    void setCurrentFault(const QString& shortName) override;
    void setMode(Mode mode) override;
    void markBand(int band) override;
    QString bandCaption(int band) const override;
    QString onOffCaption() const override;
    void setOnOffCaption(const QString& caption) override;
    QString operStbyCaption() const override;
    void enableReadOuts(bool enabled) override;
    void enableOnOff(bool enabled) override;
    void setDim(bool isDim) override;

Q_SIGNALS:
    void OperStby_Action();
    void ClearCurrentFault_Action();
    void BandSelected_Action(int band);
    void OnOff_Action();

    // What the panel shows, told at each answer, changed or not.
    void readOutShown(OperatePanel::ReadOut readOut, const QString& text);
    void faultShown(const QString& shortName);
    void modeShown(OperatePanel::Mode mode);

private:
    QWidget* readOutGroup();
    QWidget* faultGroup();
    QWidget* modeRow();
    QWidget* bandGroup();
    void showReadOuts();
    void styleBand(int band, bool isMarked);

    std::map<ReadOut, ValueLabel*> m_readOuts;
    std::vector<QLabel*> m_readOutLabels;  // StaticText24 to StaticText29
    QGroupBox* GroupBox4;
    QGroupBox* GroupBox5;
    ValueLabel* CurrentFault;
    SendButton* ClearCurrentFault;
    Lamp* Oper;
    Lamp* Stby;
    SendButton* OperStby;
    SendButton* OnOff;
    std::array<SendButton*, BandCount> BandSelected{};
    int m_markedBand = -1;
    bool m_isDim = false;
    bool m_areReadOutsEnabled = false;
    Announcer m_announcer;
    std::optional<Mode> m_shownMode;
};
