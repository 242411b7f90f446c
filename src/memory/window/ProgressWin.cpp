#include "ProgressWin.h"

#include <algorithm>

#include <QCloseEvent>
#include <QProgressBar>
#include <QVBoxLayout>

#include "Naming.h"
#include "ValueLabel.h"

namespace {

constexpr QPoint FromMainWindow(175, 150);
constexpr int BarWidth = 260;
constexpr int FullBar = 100;

}  // namespace

ProgressWin::ProgressWin(QWidget& mainWindow)
    : QWidget(&mainWindow, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_mainWindow(mainWindow),
      ProgressBar1(named(new QProgressBar, QStringLiteral("ProgressBar1"), QStringLiteral("Progress"))),
      StaticText1(named(new ValueLabel(QStringLiteral("Progress")), QStringLiteral("StaticText1"))) {
    setObjectName(QStringLiteral("ProgressWin"));
    setWindowTitle(QStringLiteral("VLX Utility"));
    // The keyboard stays with the box behind it.
    setAttribute(Qt::WA_ShowWithoutActivating);
    ProgressBar1->setMinimumWidth(BarWidth);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(StaticText1);
    rows->addWidget(ProgressBar1);
}

void ProgressWin::setStaticText1(const QString& text) {
    StaticText1->setValue(text);
}

void ProgressWin::setProgressBar1Maximum(int maximum) {
    ProgressBar1->setMaximum(maximum);
}

void ProgressWin::setProgressBar1Value(int value) {
    ProgressBar1->setValue(std::min(value, ProgressBar1->maximum()));
}

void ProgressWin::showInPlace() {
    // The last run may have left the bar busy.
    if (ProgressBar1->maximum() == 0)
        ProgressBar1->setMaximum(FullBar);
    ProgressBar1->setValue(0);
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
