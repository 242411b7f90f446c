#include <gtest/gtest.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include "LogField.h"

namespace {

class LogFieldTest : public testing::Test {
protected:
    std::string text() const { return log.toPlainText().toStdString(); }

    LogField log{LogField::SelectAll::Always};
};

TEST_F(LogFieldTest, MessagesThatRepeatAreCounted) {
    for (const char* line : {"14:05:07 lost\n", "14:05:08 lost\n", "14:05:09 lost\n", "14:05:10 back\n",
                             "14:05:11 lost\n", "14:05:12 lost \n"})
        log.appendMessage(QString::fromLatin1(line));
    EXPECT_EQ(text(), "14:05:07 lost\n14:05:09 ... 3 times\n14:05:10 back\n14:05:11 lost\n14:05:12 lost \n");
}

TEST_F(LogFieldTest, IsSavedFromItsMenuWhereThatIsOffered) {
    int chosen = 0;
    QObject::connect(&log, &LogField::saveLogChosen, &log, [&chosen] { ++chosen; });
    for (const bool isOffered : {false, true}) {
        if (isOffered)
            log.offerSaving();
        QContextMenuEvent click(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
        QApplication::sendEvent(log.viewport(), &click);
        auto* menu = log.findChild<QMenu*>();
        ASSERT_TRUE(menu);
        if (QAction* last = menu->actions().constLast(); last->text() == u"Save Log...")
            last->trigger();
        EXPECT_EQ(chosen, isOffered ? 1 : 0);
        delete menu;
    }
}

}  // namespace
