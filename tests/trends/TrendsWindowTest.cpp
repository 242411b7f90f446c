#include <QApplication>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QWheelEvent>

#include "AmplifierBench.h"
#include "Child.h"
#include "TrendsView.h"
#include "TrendsWindow.h"

using namespace std::chrono_literals;
using Series = Trends::Series;

namespace {

class TrendsWindowTest : public testing::Test, public AmplifierBench {
protected:
    TrendsWindowTest() {
        clock.setWallClock(QDateTime(QDate(2026, 11, 22), QTime(14, 0, 0)));
        for (int second = 0; second < 600; ++second) {
            for (int series = 0; series < 5; ++series)
                trends.note(Series(series), 10 * series + second % 60);
            clock.advance(1s);
        }
        trendsWindow.show();
    }

    void key(int code) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
        QApplication::sendEvent(view, &press);
    }
    void press(const QString& button) { child<QPushButton>(trendsWindow, button)->click(); }
    QString readOut() { return child<QLabel>(trendsWindow, QStringLiteral("TrendsReadOut"))->text(); }

    Trends trends{clock};
    TrendsWindow trendsWindow{platform, [](const std::exception_ptr&) { FAIL(); }, trends};
    TrendsView* view = child<TrendsView>(trendsWindow, QStringLiteral("TrendsView"));
};

TEST_F(TrendsWindowTest, CursorTellsTheValuesInWords) {
    trends.note(Series::PAVoltage, 53.2);
    trends.note(Series::Power, 1499.6);
    trends.noteFault(QStringLiteral("REFL HI"));
    const QString last = QStringLiteral(
        "14:10:00, PA Voltage 53.2 V, PA Current -, Temperature -, Power 1500 W, "
        "SWR -, REFL HI");
    EXPECT_EQ(readOut(), last);
    key(Qt::Key_Left);
    EXPECT_TRUE(readOut().startsWith(QStringLiteral("14:09:59, PA Voltage 59.0 V"))) << qPrintable(readOut());
    key(Qt::Key_Home);
    EXPECT_TRUE(readOut().startsWith(QStringLiteral("14:00:00, PA Voltage 0.0 V, PA Current 10.0 A")));
    EXPECT_EQ(view->accessibleDescription(), readOut());
    EXPECT_FALSE(trendsWindow.testAttribute(Qt::WA_QuitOnClose)) << "the main window is the program";
    key(Qt::Key_End);
    EXPECT_EQ(readOut(), last);
}

TEST_F(TrendsWindowTest, SavesTableAndPicture) {
    dialogs.files = {world.filePath(QStringLiteral("t.csv")), world.filePath(QStringLiteral("t.png")),
                     world.filePath(QStringLiteral("none/t.csv"))};
    press(QStringLiteral("SaveTrendsTable"));
    clock.advance(1s);
    press(QStringLiteral("SaveTrendsPicture"));
    clock.advance(1s);
    press(QStringLiteral("SaveTrendsTable"));
    clock.advance(1s);
    EXPECT_EQ(dialogs.saveRequests.at(0).suggestedName, QStringLiteral("VLX Trends 2026-11-22 1410.csv"));
    QFile table(world.filePath(QStringLiteral("t.csv")));
    ASSERT_TRUE(table.open(QIODevice::ReadOnly));
    EXPECT_EQ(table.readAll().count('\n'), 601);
    EXPECT_EQ(QImage(world.filePath(QStringLiteral("t.png"))).size(),
              view->size() * view->devicePixelRatio());
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown.front().startsWith(QStringLiteral("Cannot ")));
}

TEST_F(TrendsWindowTest, PausedStripsStandStill) {
    press(QStringLiteral("ZoomInTrends"));
    press(QStringLiteral("PauseTrends"));
    const QImage before = view->grab().toImage();
    clock.advance(30s);
    trends.note(Series::PAVoltage, 20);
    EXPECT_EQ(view->grab().toImage(), before);
    press(QStringLiteral("PauseTrends"));
    EXPECT_NE(view->grab().toImage(), before);
}

// Bars of whole pixels stand at places that are none.
TEST_F(TrendsWindowTest, FlatHourIsALineWithoutHoles) {
    for (int second = 0; second < 3700; ++second) {
        trends.note(Series::PAVoltage, 53.2);
        clock.advance(1s);
    }
    const QImage picture = view->grab().toImage();
    int longest = 0;
    // Without the frame of the focus.
    for (int y = 10; y < picture.height() - 10; ++y) {
        int length = 0;
        for (int x = 0; x < picture.width(); ++x) {
            length = picture.pixelColor(x, y).saturation() > 100 ? length + 1 : 0;
            longest = std::max(longest, length);
        }
    }
    EXPECT_GT(longest, picture.width() * 8 / 10);
}

}  // namespace
