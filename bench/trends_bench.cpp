// Measures the recorded hour: what a day of polling costs in memory, and a repaint of the full hour.

#include <cmath>
#include <cstdio>
#include <ctime>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPainter>

#include "SimClock.h"
#include "TrendsView.h"

using namespace std::chrono_literals;
using Series = Trends::Series;

namespace {

constexpr int Repaints = 100;

double residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toDouble();
    return 0;
}

// As lively as a contest: every value moves every second, the mode every two minutes, the band every ten.
void record(SimClock& clock, Trends& trends, int seconds) {
    for (int second = 0; second < seconds; ++second) {
        const double wave = std::sin(second / 7.0) + std::sin(second * 1.7);
        const bool isKeyed = second / 8 % 2 == 0;
        trends.noteMode(second / 120 % 2 == 0 ? QStringLiteral("Operate") : QStringLiteral("Standby"));
        trends.noteFault(second % 1200 < 5 ? QStringLiteral("REFL HI") : QString());
        trends.noteBand(QStringLiteral("%1 MHz").arg(second / 600 % 11));
        trends.note(Series::Power, isKeyed ? 1400 + 50 * wave : 0);
        trends.note(Series::SWR, isKeyed ? 1.3 + 0.1 * wave : 1);
        trends.note(Series::Temperature, 40 + 15 * std::sin(second / 900.0));
        trends.note(Series::PAVoltage, 53.2 - (isKeyed ? 0.8 : 0) + 0.1 * wave);
        trends.note(Series::PACurrent, isKeyed ? 38 + wave : 0.4);
        clock.advance(1s);
    }
}

bool judge(const char* what, double figure, const char* unit, double limit) {
    const bool isMet = figure <= limit;
    std::printf("%-58s %9.3f %-5s limit %8.3f  %s\n", what, figure, unit, limit, isMet ? "PASS" : "FAIL");
    return isMet;
}

// In processor time: what else the machine does counts for nothing.
double repaintMilliseconds(TrendsView& view) {
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
    const std::clock_t start = std::clock();
    for (int repaint = 0; repaint < Repaints; ++repaint)
        view.render(&image);
    return 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / Repaints;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    SimClock clock;
    Trends trends(clock);
    TrendsView view(trends);
    view.resize(view.sizeHint());
    record(clock, trends, 3600);
    bool isMet = judge("repaint of a full hour at the design size", repaintMilliseconds(view), "ms", 4);
    const double before = residentKiB();
    record(clock, trends, 23 * 3600);
    isMet = judge("growth of memory from the first hour to the 24th", residentKiB() - before, "KiB", 256) &&
            isMet;
    return isMet ? 0 : 1;
}
