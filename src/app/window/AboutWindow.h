#pragma once

#include <QDialog>

// Tells what this program is; "Ok" or a click anywhere closes it.
class AboutWindow final : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
