#include "ProgressWin.h"

#include <algorithm>

#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "Naming.h"

namespace {

constexpr QPoint FromMainWindow(175, 150);
constexpr int BarWidth = 260;

}  // namespace

ProgressWin::ProgressWin(QWidget& mainWindow)
    : QWidget(&mainWindow, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_mainWindow(mainWindow),
      ProgressBar1(named(new QProgressBar, QStringLiteral("ProgressBar1"), QStringLiteral("Progress"))),
      StaticText1(named(new QLabel, QStringLiteral("StaticText1"), QStringLiteral("What is being done"))) {
    setObjectName(QStringLiteral("ProgressWin"));
    setWindowTitle(QStringLiteral("VLX Utility"));
    ProgressBar1->setMinimumWidth(BarWidth);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(StaticText1);
    rows->addWidget(ProgressBar1);
}

void ProgressWin::setStaticText1(const QString& text) {
    StaticText1->setText(text);
}

void ProgressWin::setProgressBar1Maximum(int maximum) {
    ProgressBar1->setMaximum(maximum);
}

void ProgressWin::setProgressBar1Value(int value) {
    ProgressBar1->setValue(std::min(value, ProgressBar1->maximum()));
}

void ProgressWin::showInPlace() {
    move(m_mainWindow.pos() + FromMainWindow);
    show();
    raise();
}

void ProgressWin::closeWindow() {
    hide();
}

// Not the user's, but the program's: when all windows are closed at quit, the main window is the one to
// refuse.
void ProgressWin::closeEvent(QCloseEvent* event) {
    event->setAccepted(!event->spontaneous());
}
