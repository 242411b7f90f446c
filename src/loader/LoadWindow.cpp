#include "LoadWindow.h"

#include <algorithm>
#include <utility>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "LogField.h"
#include "Naming.h"
#include "Placement.h"
#include "SaveAs.h"
#include "SystemVersion.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

constexpr auto Timer1Period = 25ms;
// With trace on, lines come faster than anybody reads, and showing each by itself costs more than the load.
constexpr auto LogPause = 100ms;
constexpr auto CountDownPeriod = 1s;
constexpr int FullBar = 100;
constexpr QSize DesignSize(560, 420);

}  // namespace

LoadWindow::LoadWindow(Platform& platform, Globals& globals, MCULoader& loader,
                       VersionedFilename& versionedFilename, QWidget& mainWindow)
    : QDialog(&mainWindow),
      m_clock(platform.clock),
      m_dialogs(platform.dialogs),
      m_globals(globals),
      m_loader(loader),
      m_versionedFilename(versionedFilename),
      m_mainWindow(mainWindow),
      m_closed(m_clock),
      m_logPause(m_clock, LogPause, [this] { showLog(); }),
      m_countDown(m_clock, CountDownPeriod, [this] { tellLongWait(); }),
      ActivityLog(named(new LogField(LogField::SelectAll::NeedsSelection), QStringLiteral("ActivityLog"),
                        QStringLiteral("Log of the firmware load"))),
      ProgressBar1(named(new QProgressBar, QStringLiteral("ProgressBar1"),
                         QStringLiteral("Progress of the firmware load"))),
      LongWaitText(named(new QLabel, QStringLiteral("LongWaitText"), QString())),
      CloseIt(named(new QPushButton(QStringLiteral("Close")), QStringLiteral("CloseIt"),
                    QStringLiteral("Close the window of the firmware load"))) {
    setObjectName(QStringLiteral("LoadWindow"));
    setWindowTitle(QStringLiteral("Loading VLX Firmware"));
    // Not to the whole program: the trends and the manual stay in reach.
    setWindowModality(Qt::WindowModal);
    resize(DesignSize);

    auto* const GroupBox1 = named(new QGroupBox, QStringLiteral("GroupBox1"), QStringLiteral("Activity log"));
    (new QVBoxLayout(GroupBox1))->addWidget(ActivityLog);
    ProgressBar1->setRange(0, FullBar);
    ProgressBar1->setValue(0);

    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(GroupBox1);
    rows->addWidget(ProgressBar1);
    auto* const lowest = new QHBoxLayout;
    lowest->addWidget(LongWaitText, 1);
    lowest->addWidget(CloseIt);
    rows->addLayout(lowest);
    connect(ActivityLog, &LogField::textChanged, this, [this] { ActivityLog->moveCursor(QTextCursor::End); });
    ActivityLog->offerSaving();
    connect(ActivityLog, &LogField::saveLogChosen, this, [this] { saveActivityLog(); });
    connect(CloseIt, &QPushButton::clicked, this, [this] { CloseIt_Action(); });
}

LoadWindow::~LoadWindow() {
    m_globals.m_loadingfirmware = false;
    m_globals.ActivityLog = nullptr;
}

Task<> LoadWindow::Run() {
    Event_Open();
    // Timer1, a single shot: by then the window has been painted.
    co_await m_clock.sleep(Timer1Period);
    if (!m_closed.isOpen())
        co_await BeginLoad();
    co_await m_closed.wait();
}

void LoadWindow::Event_Open() {
    placeBelowTop(*this, m_mainWindow);
    m_globals.ActivityLog = [this](const QString& line) { takeLogLine(line); };
    m_globals.m_loadingfirmware = true;
    show();
    logVersions(m_globals);
}

Task<> LoadWindow::BeginLoad() {
    const auto loading = m_globals.mustEnd.take();
    m_isLoading = true;
    CloseIt->setEnabled(false);
    m_versionedFilename.m_strpath = m_versionedFilename.m_mstrPath;
    setProgressBar1Value(0);
    const bool ok = co_await m_loader.Load(*this);
    m_isLoading = false;
    if (!ok)
        m_globals.SetStatusText(QStringLiteral("VLX firmware load failed"), false);
    if (ok && !m_globals.m_Verbose)
        accept();
    else
        offerToClose();
}

void LoadWindow::offerToClose() {
    setProgressBar1Maximum(FullBar);
    setProgressBar1Value(FullBar);
    m_globals.SetStatusText(QStringLiteral("Click \"Close\" to close this window"), true);
    CloseIt->setEnabled(true);
}

void LoadWindow::takeLogLine(const QString& line) {
    m_unshownLog += line;
    if (!m_logPause.isOn())
        showLog();
}

void LoadWindow::showLog() {
    if (m_unshownLog.isEmpty())
        return;
    ActivityLog->appendText(std::exchange(m_unshownLog, {}));
    m_logPause.start(ClockTimer::Mode::Single);
}

void LoadWindow::saveActivityLog() {
    if (!m_saving || m_saving->isDone())
        m_saving = saveLog(m_dialogs, m_clock, ActivityLog->toPlainText());
}

// Nothing gives the button the other caption at present.
void LoadWindow::CloseIt_Action() {
    if (Text::equal(CloseIt->text(), u"Cancel"))
        m_globals.m_cancelling = true;
    else
        accept();
}

// Every way of closing comes through here: the button, the close box, Escape.
void LoadWindow::done(int result) {
    if (m_isLoading)
        return;
    m_globals.m_loadingfirmware = false;
    QDialog::done(result);
    m_closed.open();
}

void LoadWindow::setProgressBar1Maximum(int maximum) {
    ProgressBar1->setMaximum(maximum);
}

void LoadWindow::setProgressBar1Value(int value) {
    ProgressBar1->setValue(std::min(value, ProgressBar1->maximum()));
    ProgressBar1->setFormat(QStringLiteral("%p %") +
                            m_remaining.text(m_clock.now(), ProgressBar1->value(), ProgressBar1->maximum()));
}

void LoadWindow::showLongWait(const QString& what, std::chrono::seconds left) {
    m_longWait = what;
    m_longWaitEnd = m_clock.now() + left;
    if (what.isEmpty())
        m_countDown.stop();
    else
        m_countDown.start(ClockTimer::Mode::Repeating);
    tellLongWait();
}

void LoadWindow::tellLongWait() {
    if (m_longWait.isEmpty())
        return LongWaitText->clear();
    const auto left = std::chrono::ceil<std::chrono::seconds>(m_longWaitEnd - m_clock.now()).count();
    LongWaitText->setText(QStringLiteral("%1: up to %2:%3 left")
                              .arg(m_longWait)
                              .arg(left / 60)
                              .arg(left % 60, 2, 10, QLatin1Char('0')));
}

Task<bool> LoadMcu(Platform& platform, Globals& globals, MCULoader& loader,
                   VersionedFilename& versionedFilename, QWidget& mainWindow) {
    // The main window may be gone, and its children with it, before this flow is let go.
    struct Owner {
        ~Owner() { delete window; }
        QPointer<LoadWindow> window;
    };
    const Owner owner{new LoadWindow(platform, globals, loader, versionedFilename, mainWindow)};
    co_await owner.window->Run();
    co_return true;
}
