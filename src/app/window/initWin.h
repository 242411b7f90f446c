#pragma once

#include <QLabel>
#include <QWidget>

// The small window that stands in for the main window while the amplifier is sensed for the first time.
class initWin final : public QWidget {
    Q_OBJECT

public:
    initWin();
    void setText(const QString& text) { StaticText1->setText(text); }

Q_SIGNALS:
    // The user closed it: he does not want to wait for the program.
    void closedByUser();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* StaticText1;
};
