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
    void RefreshPortsButton_Action();
    void PortCheck_Action(bool checked);
    void PortField_TextChange(const QString& text);
    void PortField_LostFocus();
    void TestCommButtton_Action();

private:
    QComboBox* SerialPortMenu;
    QPushButton* RefreshPortsButton;
    QCheckBox* PortCheck;
    QLineEdit* PortField;
    QPushButton* TestCommButtton;
};
