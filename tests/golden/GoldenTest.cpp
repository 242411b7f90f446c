// One run of each flow, compared whole: every byte, wait, flush, speed, message and file.
#include <QFileInfo>

#include "GoldenBench.h"
#include "GoldenFile.h"

namespace {

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;
using State = Vlx720::State;

void sense(GoldenBench& bench) {
    bench.sense();
}

void exchange(GoldenBench& bench) {
    bench.run(bench.monitor.SendCommandParseResponse(QStringLiteral("^BN;"), 6));
    bench.run(bench.monitor.SendCommandParseResponse(QStringLiteral("^BN;"), 7));
    bench.amplifier.powerOff();
    bench.run(bench.monitor.SendCommandParseResponse(QStringLiteral("^BN;"), 6));
}

void poll(GoldenBench& bench) {
    bench.sense();
    bench.recording.DataAvailable = [&bench] { bench.monitor.takeReceived(); };
    bench.monitor.enterOperateTab();
    bench.clock.advance(1500ms);
    bench.amplifier.powerOff();
    bench.clock.advance(6s);
    bench.monitor.stopPoll();
}

void save(GoldenBench& bench) {
    bench.sense();
    const QString path = bench.choose(QStringLiteral("a.VLXConfig"));
    bench.run(bench.tools.SaveConfig_Action());
    bench.noteFile(path);
}

void saveFails(GoldenBench& bench) {
    bench.sense();
    bench.choose(QStringLiteral("a.VLXConfig"));
    bench.amplifier.misbehave({Kind::MemoryNoAnswer, 4});
    bench.run(bench.tools.SaveConfig_Action());
}

void restore(GoldenBench& bench) {
    save(bench);
    bench.choose(QStringLiteral("a.VLXConfig"));
    bench.run(bench.tools.RestoreConfig_Action());
}

void faultTable(GoldenBench& bench) {
    bench.sense();
    bench.run(bench.tools.DisplayFaultTable_Action());
}

void banner(GoldenBench& bench) {
    bench.sense();
    bench.run(bench.tools.EditBannerButton_Action());
}

void load(GoldenBench& bench) {
    bench.sense();
    bench.install(Image::make(6));
    EXPECT_TRUE(bench.run(bench.loader.Load(bench)));
}

void loadSilent(GoldenBench& bench) {
    bench.sense();
    bench.install(Image::make(1));
    EXPECT_FALSE(bench.run(bench.loader.Load(bench)));
}

void loadWithRetry(GoldenBench& bench) {
    bench.sense();
    bench.install(Image::make(2));
    bench.amplifier.misbehave({Kind::ByteLost, 1 + 68 + 66});
    EXPECT_TRUE(bench.run(bench.loader.Load(bench)));
}

void reload(GoldenBench& bench) {
    bench.sense();
    bench.install(Image::make(2));
    bench.amplifier.misbehave({Kind::PowerLoss, 5 + 1 + 68 + 30});
    EXPECT_FALSE(bench.run(bench.loader.Load(bench)));
    bench.amplifier.behave();
    bench.amplifier.powerOn();
    bench.clock.advance(1s);
    bench.sense();
    EXPECT_TRUE(bench.run(bench.loader.Load(bench)));
}

struct Run {
    const char* name;
    State state;
    int speed;
    void (*drive)(GoldenBench&);
};

class Golden : public testing::TestWithParam<Run> {};

TEST_P(Golden, RunIsAsItWas) {
    Vlx720::Settings settings;
    settings.state = GetParam().state;
    settings.speed = GetParam().speed;
    settings.loader = {.echo = 13ms, .blockWrite = 27ms};
    GoldenBench bench(settings);
    GetParam().drive(bench);
    bench.clock.advance(3s);  // answers that are still on their way
    EXPECT_EQ(bench.clock.pendingWaits(), 0);

    compareWithGolden(QStringLiteral(VLX_GOLDENS "/%1.txt").arg(QLatin1String(GetParam().name)),
                      bench.record.data());
}

INSTANTIATE_TEST_SUITE_P(
    Flows, Golden,
    testing::Values(
        Run{"sense_38400", State::Main, 38400, sense}, Run{"sense_19200", State::Main, 19200, sense},
        Run{"sense_9600", State::Main, 9600, sense}, Run{"sense_4800", State::Main, 4800, sense},
        Run{"sense_waiting", State::Waiting, 38400, sense}, Run{"sense_silent", State::Off, 38400, sense},
        Run{"poll", State::Main, 4800, poll}, Run{"poll_waiting", State::Waiting, 38400, poll},
        Run{"exchange", State::Main, 38400, exchange}, Run{"save", State::Main, 38400, save},
        Run{"save_fails", State::Main, 9600, saveFails}, Run{"restore", State::Main, 19200, restore},
        Run{"fault_table", State::Main, 38400, faultTable}, Run{"banner", State::Main, 38400, banner},
        Run{"load", State::Main, 9600, load}, Run{"load_waiting", State::Waiting, 38400, loadWithRetry},
        Run{"load_silent", State::Off, 38400, loadSilent}, Run{"reload", State::Main, 38400, reload}),
    [](const auto& run) { return std::string(run.param.name); });

}  // namespace
