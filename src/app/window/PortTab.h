// The "Port" tab.
#pragma once

#include <QWidget>

#include "PortPanel.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

class PortTab final : public QWidget, public PortPanel {
    Q_OBJECT

public:
    PortTab();

    void setSerialPortMenuRows(const QStringList& names) override;
    void setSerialPortMenuIndex(int index) override;
    QString serialPortMenuText() const override;
    QString portFieldText() const override;
    void showByNamePort(bool shown) override;
    int serialPortMenuIndex() const;

Q_SIGNALS:
    void SerialPortMenu_Change(int index);
    // The row that was chosen already is chosen once more.
    void serialPortMenuChosenAgain(int index);
    void RefreshPortsButton_Action();
    void PortCheck_Action(bool checked);
    void PortField_TextChange(const QString& text);
    void PortField_LostFocus();
    void TestCommButtton_Action();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* SerialPortMenu;
    QPushButton* RefreshPortsButton;
    QCheckBox* PortCheck;
    QLineEdit* PortField;
    QPushButton* TestCommButtton;
    bool m_isChangeTold = false;
};
