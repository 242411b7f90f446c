// The small window in front of the main one while a configuration is saved or restored.
#pragma once

#include <QWidget>

#include "ProgressView.h"

class QProgressBar;
class ValueLabel;

// The user cannot close it.
class ProgressWin : public QWidget, public ProgressView {
    Q_OBJECT

public:
    explicit ProgressWin(QWidget& mainWindow);

    void setStaticText1(const QString& text) override;
    void setProgressBar1Maximum(int maximum) override;
    void setProgressBar1Value(int value) override;
    void showInPlace() override;
    void closeWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget& m_mainWindow;
    QProgressBar* ProgressBar1;
    ValueLabel* StaticText1;
};
