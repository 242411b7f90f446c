// Figures of the memory tools, each beside what it must reach.
#include <cstdio>

#include <QApplication>
#include <QElapsedTimer>

#include "FaultTableWindow.h"
#include "MemoryBench.h"

namespace {

using namespace std::chrono_literals;

constexpr auto FirstWait = 10ms;
constexpr auto LookStep = 5ms;
constexpr int CommandLength = 12;

// The line's own time for a read of so many bytes.
double lineMilliseconds(int count) {
    const int characters = CommandLength + CommandLength + 2 * count;
    return characters * 10 * 1000.0 / 38400;
}

// What the program may add to the line's time.
double shareMilliseconds(int exchanges) {
    return static_cast<double>((FirstWait + exchanges * LookStep).count());
}

bool report(const char* what, double value, double limit) {
    const bool isReached = value <= limit;
    std::printf("%-66s %9.3f ms, at most %9.3f ms  %s\n", what, value, limit, isReached ? "PASS" : "FAIL");
    return isReached;
}

double milliseconds(Clock::Microseconds time) {
    return static_cast<double>(time.count()) / 1000;
}

class Bench : public MemoryBench {
public:
    Bench() {
        amplifier.eeprom().clearFaults();
        for (int i = 0; i < 128; ++i)
            amplifier.eeprom().addFault(static_cast<std::uint32_t>(i * 1000), i % 16, i);
    }
};

bool benchSave() {
    Bench bench;
    bench.dialogs.files.push_back(bench.world.filePath(QStringLiteral("a.VLXConfig")));
    const auto start = bench.clock.now();
    const Task<> flow = bench.tools.SaveConfig_Action();
    bench.clock.run(flow);
    const double userTime = 1;  // the dialog
    const double limit = 2 * lineMilliseconds(2) + 7 * lineMilliseconds(32) + shareMilliseconds(9);
    return bench.log.last() == QStringLiteral("Configuration was saved") &&
           report("save of a configuration at line speed, 9 exchanges",
                  milliseconds(bench.clock.now() - start) - userTime, limit);
}

// Counts the rows and takes the real time from the first to the end.
class TimedView : public FaultTableView {
public:
    explicit TimedView(FaultTableView& shown) : m_shown(shown) {}

    void showWaitCursor(bool isShown) override {
        m_shown.showWaitCursor(isShown);
        if (!isShown)
            real = static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
    }
    void addRow(const FaultTableRow& row) override {
        if (!m_timer.isValid())
            m_timer.start();
        m_shown.addRow(row);
        ++rows;
    }
    void enableSaveToFileButton() override { m_shown.enableSaveToFileButton(); }

    int rows = 0;
    double real = 0;

private:
    FaultTableView& m_shown;
    QElapsedTimer m_timer;
};

bool benchFaultTable() {
    Bench bench;
    QWidget mainWindow;
    MemoryAccess memory(bench.platform, bench.globals);
    MemoryFileWriter file(bench.clock, bench.globals, memory);
    FaultTable table(bench.platform, bench.globals, memory, file);
    FaultTableWindow window(bench.clock, [](const std::exception_ptr&) {}, table, mainWindow);
    window.show();
    TimedView view(window);
    const auto start = bench.clock.now();
    const Task<> flow = table.Begin(view);
    bench.clock.run(flow);
    const bool isRead =
        report("fault table of 1024 bytes at line speed, 32 exchanges",
               milliseconds(bench.clock.now() - start), 32 * lineMilliseconds(32) + shareMilliseconds(32));
    const bool isFilled = report("decoding 128 entries and filling the list", view.real, 20);
    return view.rows == 127 && isRead && isFilled;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const bool isSaveFast = benchSave();
    const bool isFaultTableFast = benchFaultTable();
    return isSaveFast && isFaultTableFast ? 0 : 1;
}
