// The "Operate" tab.
#pragma once

#include <array>
#include <map>
#include <optional>

#include <QWidget>

#include "OperatePanel.h"

class Lamp;
class QGroupBox;
class QLabel;
class QPushButton;

class OperateTab final : public QWidget, public OperatePanel {
    Q_OBJECT

public:
    OperateTab();

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

Q_SIGNALS:
    void OperStby_Action();
    void ClearCurrentFault_Action();
    void BandSelected_Action(int band);
    void OnOff_Action();

private:
    QWidget* readOutGroup();
    QWidget* faultGroup();
    QWidget* modeRow();
    QWidget* bandGroup();
    void styleBand(int band, bool isMarked);

    std::map<ReadOut, QLabel*> m_readOuts;
    std::array<QLabel*, 6> m_readOutLabels{};  // StaticText24 to StaticText29
    QGroupBox* GroupBox4;
    QGroupBox* GroupBox5;
    QLabel* CurrentFault;
    QPushButton* ClearCurrentFault;
    Lamp* Oper;
    Lamp* Stby;
    QPushButton* OperStby;
    QPushButton* OnOff;
    std::array<QPushButton*, BandCount> BandSelected{};
    int m_markedBand = -1;
    std::optional<Mode> m_shownMode;
};
