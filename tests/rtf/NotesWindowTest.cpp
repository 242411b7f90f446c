// The release notes on screen: the text field, the window and the message of new firmware.
#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextBlock>

#include "AmplifierBench.h"
#include "Child.h"
#include "Errors.h"
#include "RecordingTarget.h"
#include "ReleaseNotes.h"
#include "ReleaseNotesView.h"
#include "RtfEditField.h"

namespace {

using namespace std::chrono_literals;

class Field : public testing::Test, public AmplifierBench {
protected:
    void read(const QByteArray& document) {
        RtfStream stream(document, clock);
        RtfParser parser(clock, installed);
        Task<RtfParser::Ending> flow = parser.Parse(stream, field);
        ASSERT_TRUE(clock.run(flow));
        ending = flow.result();
    }
    QByteArray exported() {
        RecordingTarget target;
        const Task<> flow = field.Export(target);
        EXPECT_TRUE(clock.run(flow));
        return target.record;
    }
    QTextCharFormat lookAt(int position) {
        QTextCursor cursor(field.document());
        cursor.setPosition(position);
        return cursor.charFormat();
    }

    InstalledFonts installed{{QStringLiteral("Times")}};
    QWidget window;
    RtfEditField field{clock, dialogs, &window};
    std::optional<RtfParser::Ending> ending;
};

// Each document comes out of the field as it went in.
TEST_F(Field, ShowsLooksAndExportsThem) {
    const std::pair<const char*, const char*> rows[] = {
        {R"(a\b b\i c\plain\ul d)", "a[bold]b[bold italic]c[underline]d"},
        {R"(\outl a\shad b\outl0 c)", "[outline]a[outline shadow]b[shadow]c"},
        {R"({\colortbl;\red255;}\cf1 a\outl b\cf0 c)", "[#ff0000]a[outline #ff0000]b[outline]c"},
        {R"({\fonttbl{\f0\froman X;}}\f0\fs24 a)", "[Times 16]a"},
        {R"(\expnd8 a\expnd-1 b\expnd0 c)", "[expanded 3]a[expanded -3]b[]c"},
        {R"(\qc a\par\qr b\par\pard c)", "[align 2]a[align 3]\rb[]\rc"},
        {R"(\qj a)", "a"},
        {R"({\b a\par}\plain b\'ca b)", "[bold]a\r[]b\xCA b"},
        {R"(\caps ab\'c9\'b5)", "AB\xC9\xB5"},
        {R"(\smcaps Ab1\'8e)", "A[10]B[]1[10]\x83"},
        {R"(\fs-3 a\fs9999 b)", "[1]a[288]b"},
        {"", ""},
    };
    for (const auto& [document, record] : rows) {
        read(document);
        EXPECT_EQ(exported(), record) << document;
    }
}

TEST_F(Field, BlackFollowsThePaletteAndOtherColoursStay) {
    QPalette dark = field.palette();
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    field.setPalette(dark);
    read(R"({\colortbl;\red0;\red200\green0\blue0;}a\cf1 b\cf2 c\cf0\outl d)");
    for (const int automatic : {1, 2})
        EXPECT_FALSE(lookAt(automatic).hasProperty(QTextFormat::ForegroundBrush)) << automatic;
    EXPECT_EQ(lookAt(3).foreground().color(), QColor(200, 0, 0));
    EXPECT_EQ(lookAt(4).textOutline(), QPen(QColor(Qt::white), 0));
}

TEST_F(Field, ADifferentLookIsAChange) {
    read(R"({\colortbl;\red9;}\b\cf1\expnd4\shad a)");
    const std::optional<RtfState> shown = field.GetState();
    ASSERT_TRUE(shown.has_value());
    EXPECT_FALSE(field.StyleChanged(*shown));
    const std::function<void(RtfState&)> changes[] = {
        [](RtfState& s) { s.font = "Times"; },
        [](RtfState& s) { s.textsize = 11; },
        [](RtfState& s) { s.foregroundcolor = {}; },
        [](RtfState& s) { s.bold = false; },
        [](RtfState& s) { s.italic = true; },
        [](RtfState& s) { s.underline = true; },
        [](RtfState& s) { s.outline = true; },
        [](RtfState& s) { s.shadow = false; },
        [](RtfState& s) { s.expanded = -3; },
        [](RtfState& s) { s.expanded = 0; },
        [](RtfState& s) { s.alignment = RtfAlignment::Right; },
    };
    for (const auto& change : changes) {
        RtfState other = *shown;
        change(other);
        EXPECT_TRUE(field.StyleChanged(other)) << &change - changes;
    }
    RtfState same = *shown;
    same.expanded = 2;  // neither wide nor close nor usual: passed over
    same.alignment = RtfAlignment::Justified;
    EXPECT_FALSE(field.StyleChanged(same));
}

TEST_F(Field, IsOutOfSightUntilTheDocumentIsWhole) {
    window.resize(300, 200);
    field.setGeometry(10, 20, 280, 150);
    field.Preprocess();
    EXPECT_EQ(field.y(), 201);
    field.Write("text");
    EXPECT_TRUE(field.Postprocess());
    EXPECT_EQ(field.y(), 20);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("text"));
    read("{more}}");
    EXPECT_EQ(ending, RtfParser::Ending::TooManyEnds);
    EXPECT_EQ(field.y(), 201);
    read("{again}");
    EXPECT_EQ(field.y(), 20);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("again"));
}

TEST_F(Field, TextWithoutALookIsAnError) {
    field.Write("text");
    EXPECT_THROW(field.WriteBuffer(), NilObjectError);
}

TEST_F(Field, ParagraphsThatTheToolkitCouldNotLayOutAreParted) {
    read(QByteArray(3 * InsertionPoint::LongestParagraph, 'a'));
    EXPECT_EQ(field.document()->blockCount(), 3);
    read(QByteArray("\\b a\\b0 a").repeated(2 * InsertionPoint::MostLooks));
    EXPECT_EQ(field.document()->blockCount(), 4);
    EXPECT_FALSE(field.isCut());
    read(QByteArray("\\par").repeated(InsertionPoint::Room / InsertionPoint::PieceCost + 10));
    EXPECT_TRUE(field.isCut());
    read("short");
    EXPECT_FALSE(field.isCut());
}

class NotesWindow : public testing::Test, public AmplifierBench {
protected:
    NotesWindow() {
        globals.m_FolderPath = world.path() + u'/';
        main.show();
    }
    ~NotesWindow() override {
        clock.advance(1s);
        EXPECT_EQ(clock.pendingWaits(), 0);
    }

    void save(const QString& name, const QByteArray& document) const {
        QFile file(world.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(document);
    }
    void choose() {
        const Task<> flow = notes._HelpReleaseNotes_Action();
        clock.run(flow);
        clock.advance(1s);
    }
    static QDialog* view() {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->objectName() == QStringLiteral("ReleaseNotesView") && window->isVisible())
                return qobject_cast<QDialog*>(window);
        return nullptr;
    }
    static RtfEditField* field() { return child<RtfEditField>(*view(), QStringLiteral("RtfEditField1")); }
    static QString remark() { return child<QLabel>(*view(), QStringLiteral("StaticText1"))->text(); }

    QWidget main;
    QStringList errors;
    ReleaseNotes notes{platform, globals, [this](const std::exception_ptr& error) {
                           try {
                               std::rethrow_exception(error);
                           } catch (const ProgramError& e) {
                               errors += QString::fromUtf8(e.what());
                           }
                       }};
};

TEST_F(NotesWindow, ShowsTheNotesUntilItIsClosed) {
    save(QStringLiteral("vlxfwnotes.rtf"), R"({\rtf1{\b New} band\par})");
    choose();
    ASSERT_TRUE(view());
    EXPECT_EQ(view()->windowTitle(), QStringLiteral("VLX Firmware Release Notes"));
    EXPECT_EQ(field()->toPlainText(), QStringLiteral("New band\n"));
    EXPECT_EQ(field()->geometry(), QRect(13, 14, 739, 438));
    EXPECT_TRUE(field()->isReadOnly());
    EXPECT_TRUE(globals.m_showReleaseNotes);
    EXPECT_FALSE(view()->testAttribute(Qt::WA_QuitOnClose));

    save(QStringLiteral("vlxfwnotes.rtf"), "{other}");
    choose();
    EXPECT_EQ(field()->toPlainText(), QStringLiteral("other"));
    child<QPushButton>(*view(), QStringLiteral("BevelButton1"))->click();
    EXPECT_FALSE(view());
    EXPECT_FALSE(globals.m_showReleaseNotes);
}

TEST_F(NotesWindow, MissingAndUnfitFilesAreTold) {
    choose();
    QDir(world.path()).mkdir(QStringLiteral("vlxfwnotes.rtf"));
    choose();
    QDir(world.path()).rmdir(QStringLiteral("vlxfwnotes.rtf"));
    const QString missing = QStringLiteral("ERROR: File not found! (vlxfwnotes.rtf)");
    EXPECT_EQ(dialogs.shown, QStringList({missing, missing}));
    save(QStringLiteral("vlxfwnotes.rtf"), {});
    ASSERT_TRUE(QFile::resize(world.filePath(QStringLiteral("vlxfwnotes.rtf")), RtfStream::LargestFile + 1));
    choose();
    EXPECT_TRUE(dialogs.shown.last().contains(QStringLiteral("more than 64 MB")));
    globals.m_FolderPath.clear();
    choose();
    EXPECT_EQ(dialogs.shown.size(), 3);
    EXPECT_FALSE(view());
    EXPECT_FALSE(globals.m_showReleaseNotes);
}

TEST_F(NotesWindow, DamageIsSaidAndTheWindowStaysUsable) {
    save(QStringLiteral("vlxfwnotes.rtf"), "{a}}");
    choose();
    EXPECT_TRUE(remark().contains(QStringLiteral("damaged")));
    view()->resize(800, 900);
    EXPECT_GT(field()->y(), view()->height());
    save(QStringLiteral("vlxfwnotes.rtf"), R"({\cf1 a})");
    choose();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_TRUE(remark().contains(QStringLiteral("damaged")));
    save(QStringLiteral("vlxfwnotes.rtf"), "{a}");
    choose();
    EXPECT_EQ(remark(), QString());
    EXPECT_EQ(field()->y(), 14);
}

TEST_F(NotesWindow, ClosingEndsARead) {
    save(QStringLiteral("vlxfwnotes.rtf"), "{a}");
    const Task<> flow = notes._HelpReleaseNotes_Action();
    ASSERT_TRUE(view());
    view()->close();
    EXPECT_FALSE(view());
}

TEST_F(NotesWindow, NewFirmwareIsToldAndItsNotesOpenBesideTheMessage) {
    const Task<> notice = notes.showMessageWindow(main);
    auto* const message = main.findChild<QDialog*>(QStringLiteral("MessageWindow"));
    ASSERT_TRUE(message && message->isVisible());
    EXPECT_EQ(message->windowTitle(), QStringLiteral("VLX New Firmware"));
    EXPECT_EQ(message->windowModality(), Qt::WindowModal);
    auto* const look = child<QPushButton>(*message, QStringLiteral("BevelButton1"));
    look->click();
    clock.advance(1s);
    EXPECT_EQ(dialogs.shown, QStringList({QStringLiteral("ERROR: File not found! (VLXfwnotes.rtf)")}));

    // As it was fetched: where letter case counts, this is another name.
    save(QStringLiteral("vlxfwnotes.rtf"), "{notes}");
    look->click();
    clock.advance(1s);
    ASSERT_TRUE(view());
    EXPECT_EQ(field()->toPlainText(), QStringLiteral("notes"));
    EXPECT_TRUE(message->isVisible());
    EXPECT_FALSE(notice.isDone());

    globals.m_MessageWindowResponse = QStringLiteral("former");
    child<QPushButton>(*message, QStringLiteral("BevelButton2"))->click();
    EXPECT_TRUE(clock.run(notice));
    EXPECT_EQ(globals.m_MessageWindowResponse, QStringLiteral("Ok"));
    EXPECT_TRUE(view());
}

}  // namespace
