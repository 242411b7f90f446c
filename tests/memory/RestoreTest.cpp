// The configuration on its way back to the amplifier.
#include "MemoryBench.h"
#include "ZlibCrc.h"

namespace {

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;

const QString Saved = QStringLiteral("mine.VLXConfig");

// Every box that a restore may show, letter for letter, with a short name for the tables below.
const std::pair<const char*, const char*> Boxes[] = {
    {"incomplete?",
     "The configuration file is incomplete.\n\nCannot restore from an incomplete configuration file."},
    {"altered?",
     "The configuration file has been altered after it was saved.\n\n"
     "Cannot  restore from a modified configuration file."},
    {"modified",
     "The configuration file has been modified since it\nas written. Cannot restore from a modified \n"
     "configuration file."},
    {"incomplete",
     "The configuration file is incomplete\nas written. Cannot restore from an incomplete \n"
     "configuration file."},
    {"other unit",
     "The Serial Number within the restore file\ndoes not match the Serial Number of your M7.\n"
     "Restore cannot continue."},
};

QString shortName(const QString& box) {
    if (box.startsWith(QStringLiteral("CRC compare failure, expected 0x")))
        return QStringLiteral("crc");
    for (const auto& [name, text] : Boxes)
        if (box == QString::fromLatin1(text))
            return QString::fromLatin1(name);
    return QStringLiteral("unknown box: ") + box;
}

// The lines with a CRC line that fits them.
QByteArray sealed(const QByteArrayList& lines) {
    return (lines + QByteArrayList{"CRC32 = 0x" + storedCrc(lines).rightJustified(8, '0'), ""}).join("\r\n");
}

// The lines of a saved file without its CRC line.
QByteArrayList linesOf(const QByteArray& file) {
    QByteArrayList lines = file.split('\n');
    for (QByteArray& line : lines)
        line = line.trimmed();
    return lines.mid(0, lines.size() - 2);
}

struct FileCase {
    const char* name;
    QByteArray content;
    const char* outcome;
};

class Restore : public testing::Test, public MemoryBench {
protected:
    Restore() {
        save(Saved);
        good = read(Saved);
        image = amplifier.eeprom().contents().left(0xA0) + QByteArray(0x40, '\0');
        for (int address = 0; address < 224; ++address)
            amplifier.eeprom().write(0, address, QByteArray(1, static_cast<char>(255 - address)));
        changed = configuration();
        rest = restOfMemory();
        line_and_log.clear();
        log.clear();
    }

    // Stops a restore in a box between its two passes.
    QByteArray withoutCrc() const { return good.left(good.indexOf("MEM2 00 20")); }
    QByteArray configuration() { return amplifier.eeprom().contents().left(224); }
    QStringList boxes() const {
        QStringList names;
        for (const QString& box : dialogs.shown)
            names += shortName(box);
        return names;
    }
    // Restores a file of this content, and tells what it did: boxes, then "sent" if something was written,
    // then the last word of the log.
    std::string outcomeOf(const QByteArray& content) {
        powerAnew();
        amplifier.eeprom().write(0, 0, changed);
        dialogs.shown.clear();
        write(Saved, content);
        port.clearWritten();
        restore(Saved);
        QStringList outcome = boxes();
        if (port.written().contains("^EW")) {
            outcome += QStringLiteral("sent");
            EXPECT_EQ(port.written().count("^EW"), 7);
        } else {
            EXPECT_EQ(configuration(), changed);
        }
        EXPECT_EQ(restOfMemory(), rest);
        const bool isRestored = log.last() == QStringLiteral("Configuration was restored");
        return (outcome +
                QStringList(isRestored ? QStringLiteral("restored") : QStringLiteral("not restored")))
            .join(u", ")
            .toStdString();
    }
    Task<> startWith(const QString& name) {
        dialogs.files.push_back(path(name));
        return tools.RestoreConfig_Action();
    }
    // Up to the box between the two passes through the file.
    Task<> startUpToTheBox(const QByteArray& content) {
        write(Saved, content);
        Task<> flow = startWith(Saved);
        EXPECT_TRUE(clock.runUntil([this] { return !dialogs.shown.isEmpty(); }));
        return flow;
    }

    QByteArray good;
    QByteArray image;
    QByteArray changed;
    QByteArray rest;
};

TEST_F(Restore, SendsTheFileAndZerosFromA0On) {
    restore(Saved);
    EXPECT_EQ(configuration(), image);
    EXPECT_EQ(restOfMemory(), rest);
    EXPECT_EQ(amplifier.state(), Vlx720::State::Main);  // again, after its restart
    EXPECT_EQ(dialogs.openRequests.front().title, QStringLiteral("Select VLXConfig file"));
    EXPECT_EQ(dialogs.openRequests.front().initialFolder, world.path());
    EXPECT_EQ(dialogs.openRequests.front().type.extension, QStringLiteral(".VLXConfig"));
}

// Pulled out at any write, or before the first.
TEST_F(Restore, AClaimOfSuccessNeedsThePortToTheEnd) {
    for (int writes = 0; writes <= 8; ++writes) {
        port.replug();
        port.Open();
        powerAnew();
        port.clearWritten();
        const Task<> flow = startWith(Saved);
        const auto isPulled = [&] { return port.written().count('^') >= writes; };
        EXPECT_TRUE(clock.runUntil(isPulled));
        port.unplug();
        EXPECT_TRUE(clock.run(flow, 200ms)) << writes;
        EXPECT_EQ(log.last(), QStringLiteral("Configuration was not restored")) << writes;
        expectNothingLeftBehind();
    }
}

TEST_F(Restore, TellsWhatIsWrongWithAFile) {
    const QByteArrayList lines = linesOf(good);
    const QByteArray crcLine = good.mid(good.indexOf("CRC32"));
    const QByteArray seven = crcLine.chopped(3) + "\r\n";
    const auto replaced = [this](const char* before, const QByteArray& after) {
        return QByteArray(good).replace(before, after);
    };
    const auto with = [&lines](const QByteArray& last) { return sealed(lines + QByteArrayList{last}); };
    const FileCase cases[] = {
        {"as saved", good, "sent, restored"},
        {"comment edited", replaced("*Do not", "*Do now"), "crc, modified, not restored"},
        {"data edited", replaced("MEM2 00 20", "MEM2 00 30"), "crc, modified, not restored"},
        {"CRC line in small letters", good.left(good.size() - crcLine.size()) + crcLine.toLower(),
         "sent, restored"},
        {"CRC with 0X", replaced("= 0x", "= 0X"), "sent, restored"},
        {"CRC of seven digits", good.left(good.size() - crcLine.size()) + seven, "incomplete, not restored"},
        {"CRC without 0x", replaced("= 0x", "=  x"), "incomplete, not restored"},
        {"CRC with a wrong letter", good.chopped(3) + "g\r\n", "incomplete, not restored"},
        {"CRC of nine digits", good.chopped(2) + "7\r\n", "sent, restored"},
        {"CRC line without an end", good.chopped(2), "not restored"},
        {"two CRC lines", good + crcLine, "sent, restored"},
        {"a second CRC line that is wrong", good + "CRC32 = 0x00000000\r\n", "crc, modified, not restored"},
        {"a second CRC line of one digit", good + "CRC32 = 0x1\r\n", "incomplete, not restored"},
        {"a good MEM2 line behind the CRC", good + "MEM2 00 20 01 55\r\n", "altered?, sent, restored"},
        {"a bad MEM2 line behind the CRC", good + "MEM2 00 A0 01 55\r\n", "not restored"},
        {"a comment behind the CRC", good + "*note\r\n", "sent, restored"},
        {"no CRC line, last MEM2 line bad", lines.join("\r\n") + "\r\n", "not restored"},
        {"no CRC line, last MEM2 line good", lines.mid(0, 9).join("\r\n") + "\r\n",
         "incomplete?, altered?, sent, restored"},
        {"empty", "", "incomplete?, not restored"},
        {"another kind of file", "<html>\r\n<body>\r\n", "incomplete?, not restored"},
        {"no line that can be applied", sealed({"MEM2 00 A0 20 00", "MEM2 00 C0 20 00"}),
         "incomplete?, not restored"},
        {"one line that can be applied", sealed({"MEM2 00 00 20 00"}), "sent, restored"},
        {"MEM2 line with count FF", with("MEM2 00 20 FF 00"), "sent, restored"},
        {"MEM2 line with letters everywhere", with("MEM2 xx yy zz ????"), "sent, restored"},
        {"MEM2 line of another page", with("MEM2 03 20 01 55"), "sent, restored"},
        {"another unit's file", replaced("VLX Serial Number = 01234", "VLX Serial Number = 09999"),
         "crc, modified, not restored"},
        {"another unit's file with its own CRC", sealed(linesOf(replaced("= 01234", "= 09999"))),
         "sent, restored"},
        {"serial number line of another unit", with("M7 Serial Number = 09999"), "other unit, not restored"},
        {"the same in small letters", with("m7 serial number = 09999"), "other unit, not restored"},
        {"serial number line of this unit", with("M7 Serial Number = 01234"), "sent, restored"},
    };
    for (const auto& [name, content, expected] : cases) {
        SCOPED_TRACE(name);
        // Each starts as after a good restore, whose flags must not outlive it.
        outcomeOf(good);
        EXPECT_EQ(outcomeOf(content), expected);
    }
}

TEST_F(Restore, ShowsTheNumbersOfACrcThatDiffers) {
    write(Saved, QByteArrayLiteral("123456789\r\nCRC32 = 0x0BC6D934\r\n"));
    restore(Saved);
    EXPECT_EQ(dialogs.shown.front(),
              QStringLiteral("CRC compare failure, expected 0xBC6D934, computed 0xCBF43926"));
}

TEST_F(Restore, AMemoryLineSetsThirtyTwoBytesWhateverItsCount) {
    outcomeOf(sealed({"MEM2 00 10 02 AABB", "MEM2 00 90 01 CC"}));
    QByteArray expected(224, '\0');
    expected.replace(0x10, 2, "\xAA\xBB");
    expected.replace(0x90, 1, "\xCC");
    EXPECT_EQ(configuration(), expected);
    outcomeOf(sealed({"MEM2 00 20 20 " + QByteArray(64, '7'), "MEM2 00 20 01 55"}));
    EXPECT_EQ(configuration().mid(0x20, 32), "\x55" + QByteArray(31, '\0'));
}

TEST_F(Restore, AsksTheAdvancedUserAboutAnotherUnitsFile) {
    globals.m_AdvancedMode = true;
    const QByteArray content = sealed(linesOf(good) + QByteArrayList{"M7 Serial Number = 09999"});
    for (const bool isNo : {true, false}) {
        dialogs.cautionAnswers = {isNo, isNo};
        const std::string outcome = outcomeOf(content);
        EXPECT_TRUE(dialogs.shown.front().startsWith(
            QStringLiteral("The Serial Number within the restore file\ndoes not")));
        EXPECT_TRUE(dialogs.shown.front().endsWith(QStringLiteral(
            "and perform Tx Gain calibration.\nPress No to abandon restore\nPress Yes to continue anyway.")));
        EXPECT_EQ(outcome.find("sent") == std::string::npos, isNo);
    }
}

// Once the first pass was good, a file that changes is sent all the same, if it has data.
TEST_F(Restore, WhatBecomesOfTheFileBetweenThePassesIsToldAndOnlyDataIsSent) {
    struct Row {
        std::optional<QByteArray> then;
        bool isSent;
        QStringList boxes;
    };
    for (const auto& [then, isSent, said] :
         {Row{std::nullopt, false, {}}, Row{QByteArray(), false, {}},
          Row{QByteArray(good).replace("*Do not", "*Do now"), true, {"crc", "modified"}}}) {
        dialogs.shown.clear();
        powerAnew();
        const Task<> flow = startUpToTheBox(withoutCrc());
        if (then)
            write(Saved, *then);
        else
            QFile::remove(path(Saved));
        EXPECT_TRUE(clock.run(flow));
        EXPECT_EQ(boxes().mid(2), said);
        EXPECT_EQ(log.last(), QStringLiteral("Configuration was not restored"));
        EXPECT_EQ(log[log.size() - 2].startsWith(QStringLiteral("Cannot read ")), !then);
        EXPECT_EQ(configuration(), isSent ? image : changed);
        expectNothingLeftBehind();
    }
}

// Its first byte already cannot be read, though it opens.
TEST_F(Restore, AFileThatCannotBeReadToItsEndIsNotRestored) {
    dialogs.files.push_back(QStringLiteral("/proc/self/mem"));
    run(tools.RestoreConfig_Action());
    EXPECT_EQ(log, QStringList(
                       {"Cannot read /proc/self/mem: Input/output error", "Configuration was not restored"}));
    EXPECT_EQ(configuration(), changed);
}

TEST_F(Restore, NothingIsSaidOfAnAmplifierThatDoesNotAnswer) {
    amplifier.misbehave({Kind::MemoryNoAnswer});
    restore(Saved);
    EXPECT_EQ(log, QStringList({"Restoring configuration", "Configuration was restored"}));
    EXPECT_EQ(configuration(), image);
    amplifier.misbehave({Kind::MemoryWriteLost, 1});
    clock.advance(5s);
    amplifier.eeprom().write(0, 0, changed);
    restore(Saved);
    EXPECT_EQ(configuration(), changed.left(32) + image.mid(32));
    EXPECT_EQ(log.last(), QStringLiteral("Configuration was restored"));
}

TEST_F(Restore, CountsAsAWriteFromTheFirstByteToTheRestart) {
    {
        const Task<> stopped = startUpToTheBox(withoutCrc());
        EXPECT_FALSE(globals.mustEnd.isTaken());
    }
    EXPECT_EQ(configuration(), changed);
    write(Saved, good);
    port.clearWritten();
    const Task<> flow = startWith(Saved);
    EXPECT_TRUE(clock.runUntil([this] { return globals.mustEnd.isTaken(); }));
    EXPECT_EQ(port.written().count("^EW"), 1);
    EXPECT_TRUE(clock.runUntil([this] { return !globals.mustEnd.isTaken(); }));
    EXPECT_EQ(configuration(), image);
    EXPECT_TRUE(port.written().endsWith("^rpm;"));
    EXPECT_TRUE(clock.run(flow));
    expectNothingLeftBehind();
}

TEST_F(Restore, CancelAndAnUnreadableFileChangeNothing) {
    run(tools.RestoreConfig_Action());
    EXPECT_EQ(log, QStringList());
    restore(QStringLiteral("missing"));
    EXPECT_EQ(log.last(), QStringLiteral("Configuration was not restored"));
    globals.m_FirmwareStatus = FirmwareStatus::Unknown;
    restore(Saved);
    EXPECT_EQ(log.last(), QStringLiteral("Configuration was not restored"));
    EXPECT_EQ(configuration(), changed);
    EXPECT_EQ(dialogs.shown, QStringList());
}

}  // namespace
