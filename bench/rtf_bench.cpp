// Figures of the RTF reader, each beside what it must reach.
#include <cstdio>

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include "LoopGap.h"
#include "RtfEditField.h"
#include "RtfNotes.h"
#include "RtfParser.h"
#include "SystemClock.h"

namespace {

constexpr qsizetype Megabyte = 1'000'000;
constexpr double FasterThanUnrtf = 3;
// What a byte of a document ten times as long may cost, over that of the short one.
constexpr double Linear = 1.1;
constexpr double LongestGap = 50;
constexpr double FieldLimit = 1000;
constexpr int Repetitions = 9;

bool report(const char* what, double value, double limit, const char* unit) {
    const bool isReached = value <= limit;
    std::printf("%-66s %9.3f %s, at most %9.3f %s  %s\n", what, value, unit, limit, unit,
                isReached ? "PASS" : "FAIL");
    return isReached;
}

class CountingTarget final : public RtfTarget {
public:
    void SetState(const RtfState&) override { ++states; }
    void Write(QByteArrayView text) override { bytes += text.size(); }
    bool Preprocess() override { return true; }
    bool Postprocess() override { return true; }

    std::int64_t states = 0;
    std::int64_t bytes = 0;
};

class NoDialogs final : public Dialogs {
public:
    void Beep() override {}
    Task<> MsgBox(QString, BoxKind) override { co_return; }
    Task<bool> askCaution(MessageRequest) override { co_return false; }
    Task<QString> saveFile(SaveFileRequest) override { co_return QString(); }
    Task<QString> openFile(OpenFileRequest) override { co_return QString(); }
    Task<QString> selectFolder(SelectFolderRequest) override { co_return QString(); }
};

Task<> show(RtfParser& parser, RtfStream& stream, RtfEditField& field) {
    co_await parser.Parse(stream, field);
    co_await field.layOut();
}

struct Cost {
    double milliseconds = 1e9;
    double longestGap = 1e9;
};

// So many reads, one after the other, in processor time: the machine may be busy with other things.
void read(const QByteArray& document, int times, Cost& best) {
    const InstalledFonts installed{{QStringLiteral("Times"), QStringLiteral("Arial")}};
    Clock::Microseconds time{0};
    for (int i = 0; i < times; ++i) {
        SystemClock clock;
        RtfStream stream(document, clock);
        RtfParser parser(clock, installed);
        CountingTarget target;
        const auto begin = computingTime();
        const auto gap = longestGap([&] { return parser.Parse(stream, target); });
        time += computingTime() - begin;
        if (target.states == 0 || !stream.isAtEnd())
            return;
        best.longestGap = std::min(best.longestGap, static_cast<double>(gap.count()) / 1000);
    }
    best.milliseconds = std::min(best.milliseconds, static_cast<double>(time.count()) / 1000);
}

// Ten reads of a document against one of another that is ten times as long, the best of several of each:
// measured in turn and for as long, both meet the same machine.
struct Comparison {
    Comparison(const QByteArray& small, const QByteArray& large) {
        for (int i = 0; i < Repetitions; ++i) {
            read(small, 10, tenShort);
            read(large, 1, oneLong);
        }
        lengths = static_cast<double>(large.size()) / static_cast<double>(10 * small.size());
    }
    double perByte() const { return oneLong.milliseconds / tenShort.milliseconds / lengths; }

    Cost tenShort;
    Cost oneLong;
    double lengths;
};

// Wall time of a whole run of the program; below 0 when it is not there.
double unrtfMilliseconds(const QByteArray& document) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("notes.rtf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size())
        return -1;
    file.close();
    double best = 1e9;
    for (int i = 0; i < Repetitions; ++i) {
        QProcess unrtf;
        unrtf.setStandardOutputFile(QProcess::nullDevice());
        QElapsedTimer timer;
        timer.start();
        unrtf.start(QStringLiteral("unrtf"), {QStringLiteral("--text"), file.fileName()});
        if (!unrtf.waitForFinished(-1) || unrtf.exitCode() != 0)
            return -1;
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

bool benchNotes() {
    const Comparison notes(RtfNotes::ordinary(Megabyte), RtfNotes::ordinary(10 * Megabyte));
    const double unrtf = unrtfMilliseconds(RtfNotes::ordinary(Megabyte));
    std::printf("unrtf --text on the same megabyte: %.1f ms\n", unrtf);
    const bool isFast =
        report("1 MB of ordinary notes", notes.tenShort.milliseconds / 10, unrtf / FasterThanUnrtf, "ms");
    const bool isLinear = report("a byte of 10 MB, over one of 1 MB", notes.perByte(), Linear, "   ");
    const bool isAlive =
        report("longest gap between two turns of the loop", notes.oneLong.longestGap, LongestGap, "ms");
    return isFast && isLinear && isAlive;
}

// A byte of 100,000 elements against one of 10,000.
bool benchHostile() {
    bool isLinear = true;
    for (const auto& [what, make] : RtfNotes::hostile()) {
        const Comparison elements(make(10'000), make(100'000));
        isLinear &= report(what, elements.perByte(), Linear, "   ");
        isLinear &= report("  longest gap", elements.oneLong.longestGap, LongestGap, "ms");
    }
    return isLinear;
}

// Into the shown field, until all of it is laid out.
bool benchField(const char* what, const QByteArray& document, double limit) {
    SystemClock clock;
    NoDialogs dialogs;
    QWidget window;
    window.resize(765, 500);
    RtfEditField field(clock, dialogs, &window);
    field.setGeometry(13, 14, 739, 438);
    window.show();
    const InstalledFonts installed{{QStringLiteral("Times"), QStringLiteral("Helvetica")}};
    RtfParser parser(clock, installed);
    RtfStream stream(document, clock);
    const auto begin = computingTime();
    const auto gap = longestGap([&] { return show(parser, stream, field); });
    const auto time = computingTime() - begin;
    const bool isFast = report(what, static_cast<double>(time.count()) / 1000, limit, "ms");
    const bool isAlive = report("  longest gap", static_cast<double>(gap.count()) / 1000, LongestGap, "ms");
    return isFast && isAlive && field.document()->blockCount() > 1;
}

bool benchFields() {
    const bool isNotesShown = benchField("1 MB of ordinary notes into the shown field, laid out",
                                         RtfNotes::ordinary(Megabyte), FieldLimit);
    const bool isTextShown =
        benchField("1 MB without a control word, likewise", QByteArray(Megabyte, 'a'), FieldLimit);
    const bool areCapitalsShown =
        benchField("1 MB in one group of small capitals, likewise",
                   "{\\smcaps " + QByteArray("Abcd Efgh ").repeated(Megabyte / 10) + '}', 10 * FieldLimit);
    return isNotesShown && isTextShown && areCapitalsShown;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const bool isGood = benchNotes();
    const bool isLinear = benchHostile();
    const bool isShown = benchFields();
    return isGood && isLinear && isShown ? 0 : 1;
}
