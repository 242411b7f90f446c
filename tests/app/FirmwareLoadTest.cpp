// New firmware on its way from the folder to the amplifier, button by button.
#include <QMenu>
#include <QToolButton>

#include "AppBench.h"
#include "HexText.h"

using namespace std::chrono_literals;

namespace {

class FirmwareLoadTest : public testing::Test {
protected:
    FirmwareLoadTest() {
        const QString folder = bench.dataFolder() + QStringLiteral("/Tessarin/VLX Firmware/");
        QDir().mkpath(folder);
        QFile file(folder + QStringLiteral("VLX720FP0105.hex"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(HexText::file(image));
        file.close();
        bench.amplifier().setFirmwareVersion("01.04");
        bench.start();
        bench.chooseTab(Tab::Firmware);
    }

    // Presses the button and waits for the window's end, or for its "Close" after a failure.
    void load() {
        bench.press(QStringLiteral("SendVLXButton"));
        EXPECT_TRUE(bench.clock().runUntil([this] {
            auto* const log = bench.window().findChild<QTextEdit*>(QStringLiteral("ActivityLog"));
            if (log && log->toPlainText().endsWith(QStringLiteral("VLX firmware load failed\n")))
                bench.press(QStringLiteral("CloseIt"));
            return bench.app().flows().isIdle();
        }));
    }
    void expectLoaded() {
        EXPECT_EQ(bench.label(QStringLiteral("MCUinstalledText")), QStringLiteral("01.05"));
        EXPECT_EQ(bench.amplifier().flash().read(Flash::Begin, static_cast<int>(image.size())),
                  Image::loaded(image));
        EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("SendVLXButton"))->isEnabled());
        EXPECT_EQ(bench.logText().trimmed().right(5), QStringLiteral("Ready"));
        bench.quit();
        EXPECT_EQ(bench.clock().pendingWaits(), 0);
    }

    const QByteArray image = Image::make(30);
    AppBench bench;
};

TEST_F(FirmwareLoadTest, NewImageIsNoticedAndLoaded) {
    EXPECT_EQ(bench.label(QStringLiteral("MCUinstalledText")), QStringLiteral("01.04"));
    EXPECT_EQ(bench.label(QStringLiteral("MCUavailableText")), QStringLiteral("01.05"));
    bench.press(QStringLiteral("SendVLXButton"));
    bench.clock().advance(2500ms);
    bench.window().close();
    EXPECT_TRUE(bench.window().isVisible()) << "not while it loads";
    EXPECT_TRUE(bench.clock().runUntil([this] { return bench.app().flows().isIdle(); }));
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("VLX firmware load is complete")));
    expectLoaded();
}

TEST_F(FirmwareLoadTest, ImagesOfTheFolderAreOfferedInAMenu) {
    bench.control<QToolButton>(QStringLiteral("ImagesButton"))->click();
    bench.clock().advance(10ms);
    auto* const menu = bench.control<QMenu>(QStringLiteral("ImagesMenu"));
    ASSERT_TRUE(menu->isVisible());
    EXPECT_FALSE(menu->activeAction()) << "a key pressed twice sends nothing";
    ASSERT_EQ(menu->actions().size(), 1);
    menu->actions().front()->trigger();
    menu->close();
    EXPECT_TRUE(bench.clock().runUntil([this] { return bench.app().flows().isIdle(); }));
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("VLX firmware load is complete")));
    expectLoaded();
}

TEST_F(FirmwareLoadTest, SameButtonMendsALoadThatLostItsPower) {
    bench.amplifier().misbehave({.kind = Misbehaviour::Kind::PowerLoss, .nth = 1000});
    load();
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("VLX Block write failed at address: ")));
    bench.amplifier().behave();
    bench.amplifier().powerOn();
    bench.clock().advance(1s);
    load();
    expectLoaded();
}

}  // namespace
