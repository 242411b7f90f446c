#include <cmath>

#include <gtest/gtest.h>
#include <QDateTime>

#include "Scale.h"
#include "SimClock.h"
#include "TimeAxis.h"
#include "Trends.h"
#include "TrendsCsv.h"

using namespace std::chrono_literals;
using Series = Trends::Series;

namespace {

class TrendsTest : public testing::Test {
protected:
    void poll(double volts, double watts) {
        trends.note(Series::Power, watts);
        clock.advance(20ms);
        trends.note(Series::PAVoltage, volts);
        clock.advance(980ms);
    }

    SimClock clock;
    Trends trends{clock};
};

TEST_F(TrendsTest, OnePollIsOneSample) {
    poll(53.2, 500);
    poll(53.1, 510);
    ASSERT_EQ(trends.samples().size(), 2U);
    EXPECT_FLOAT_EQ(trends.samples()[0].value(Series::PAVoltage), 53.2F);
    EXPECT_FLOAT_EQ(trends.samples()[1].value(Series::Power), 510);
    EXPECT_TRUE(std::isnan(trends.samples()[0].value(Series::SWR)));
    // An answer that was lost does not push the next poll's into this one.
    trends.note(Series::Power, 520);
    clock.advance(1s);
    trends.note(Series::PAVoltage, 53.0);
    EXPECT_EQ(trends.samples().size(), 4U);
    // A second value of the same kind is the next poll's, however fast it comes.
    trends.note(Series::PAVoltage, 52.9);
    EXPECT_EQ(trends.samples().size(), 5U);
}

TEST_F(TrendsTest, KeepsTheLastHourAndNoMore) {
    for (int second = 0; second < 3605; ++second)
        poll(second, 1);
    ASSERT_EQ(trends.samples().size(), Trends::SampleLimit);
    EXPECT_FLOAT_EQ(trends.samples()[0].value(Series::PAVoltage), 5);
    EXPECT_FLOAT_EQ(trends.samples().last().value(Series::PAVoltage), 3604);
    EXPECT_EQ(trends.firstAtOrAfter(trends.samples()[100].at), 100U);
    EXPECT_EQ(trends.firstAtOrAfter(trends.samples()[100].at + 1ms), 101U);
    EXPECT_EQ(trends.firstAtOrAfter(trends.now() + 1h), trends.samples().size());
}

TEST_F(TrendsTest, OnlyChangesAreMarked) {
    trends.noteBand(QStringLiteral("14 MHz"));
    trends.noteMode(QStringLiteral("Standby"));
    trends.noteFault(QString());
    trends.noteBand(QStringLiteral("14 MHz"));
    EXPECT_EQ(trends.marks().size(), 0U);
    trends.noteMode(QStringLiteral("Operate"));
    trends.noteFault(QStringLiteral("REFL HI"));
    trends.noteFault(QStringLiteral("REFL HI"));
    trends.noteFault(QString());
    trends.noteFault(QStringLiteral("REFL HI"));
    ASSERT_EQ(trends.marks().size(), 3U);
    EXPECT_EQ(trends.marks()[0].text, QStringLiteral("Operate"));
    EXPECT_EQ(trends.marks()[2].kind, Trends::Mark::Kind::Fault);
}

TEST_F(TrendsTest, LimitsAndNearestSampleAreThoseOfTheTimeAskedFor) {
    for (const double volts : {50.0, 40.0, 60.0, 55.0})
        poll(volts, 1);
    const auto at = [this](std::size_t index) { return trends.samples()[index].at; };
    const auto limits = trends.limits(Series::PAVoltage, at(0), at(1));
    ASSERT_TRUE(limits);
    EXPECT_FLOAT_EQ(limits->lowest, 40);
    EXPECT_FLOAT_EQ(limits->highest, 50);
    EXPECT_FALSE(trends.limits(Series::SWR, at(0), at(3)));
    EXPECT_FALSE(trends.limits(Series::PAVoltage, at(3) + 1ms, at(3) + 1h));
    EXPECT_EQ(trends.nearest(at(1) + 400ms), &trends.samples()[1]);
    EXPECT_EQ(trends.nearest(at(1) + 600ms), &trends.samples()[2]);
    EXPECT_EQ(trends.nearest(at(3) + Trends::LongestStep), &trends.samples()[3]);
    EXPECT_EQ(trends.nearest(at(3) + Trends::LongestStep + 1ms), nullptr);
}

TEST_F(TrendsTest, TableHoldsSamplesAndEvents) {
    clock.setWallClock(QDateTime(QDate(2026, 11, 22), QTime(14, 5, 7)));
    trends.noteBand(QStringLiteral("14 MHz"));
    poll(53.25, 500);
    trends.noteBand(QStringLiteral("18 MHz"));
    trends.noteFault(QStringLiteral("REFL HI"));
    poll(53, 0);
    trends.noteFault(QStringLiteral("HI TEMP"));
    EXPECT_EQ(trendsCsv(trends).toStdString(),
              "Time,PA Voltage (V),PA Current (A),Temperature (C),Power (W),SWR,Event\n"
              "2026-11-22 14:05:07,53.25,,,500,,\n"
              "2026-11-22 14:05:08,53,,,0,,18 MHz; REFL HI\n"
              "2026-11-22 14:05:09,,,,,,HI TEMP\n");
}

TEST(ScaleTest, IsRoundAndHoldsBothLimits) {
    struct Case {
        double lowest, highest, finest;
        double from, to, step;
    };
    const std::vector<Case> cases{
        // clang-format off
        {52.9, 53.4, 0.5,    52.5, 53.5, 0.5},
        {0,    1499, 50,     0,    1500, 500},
        {0,    1501, 50,     0,    2000, 500},
        {20,   20,   5,      20,   25,   5},
        {0,    0,    50,     0,    50,   50},
        {-3,   41,   5,      -20,  60,   20},
        {0.9,  1.1,  0.5,    0.5,  1.5,  0.5},
        {0,    1e6,  50,     0,    1e6,  500000},
        // clang-format on
    };
    for (const Case& c : cases) {
        const Scale scale = scaleFor(c.lowest, c.highest, 4, c.finest);
        const auto text = testing::Message() << c.lowest << " to " << c.highest;
        EXPECT_NEAR(scale.from, c.from, 1e-6) << text;
        EXPECT_NEAR(scale.to, c.to, 1e-6) << text;
        EXPECT_NEAR(scale.step, c.step, 1e-6) << text;
    }
}

TEST(ScaleTest, TimesStandApart) {
    const std::tuple<double, double, int> cases[] = {{0.05, 99, 5}, {0.05, 100, 10}, {1, 100, 120},
                                                     {5, 100, 600}, {5, 119, 600},   {5, 120, 900},
                                                     {9, 500, 900}};
    for (const auto& [secondsAPixel, room, step] : cases)
        EXPECT_EQ(timeStepFor(secondsAPixel, room), step) << secondsAPixel << ' ' << room;
}

TEST_F(TrendsTest, AxisFollowsThePresentUntilItIsPaused) {
    TimeAxis axis(trends);
    axis.setPlace(100, 700);
    clock.advance(2h);
    EXPECT_EQ(axis.to(), trends.now());
    axis.zoom(0.5, axis.from());
    EXPECT_EQ(axis.to(), trends.now());
    EXPECT_EQ(axis.span(), 30min);
    axis.setPaused(true);
    const auto shown = axis.time(400);
    axis.zoom(0.5, shown);
    EXPECT_NEAR(axis.x(shown), 400, 0.01);
    clock.advance(10s);
    EXPECT_NEAR(axis.x(shown), 400, 0.01);
    axis.zoom(1e-9, shown);
    EXPECT_EQ(axis.span(), TimeAxis::ShortestSpan);
    axis.bringIntoView(shown - 10min);
    EXPECT_EQ(axis.from(), shown - 10min);
    axis.zoom(1e9, shown);
    EXPECT_EQ(axis.span(), Trends::Span);
    EXPECT_LE(axis.to(), trends.now());
    axis.setPaused(false);
    EXPECT_EQ(axis.to(), trends.now());
}

}  // namespace
