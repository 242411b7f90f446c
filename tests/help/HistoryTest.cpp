// Going back and forward.
#include <QStringList>

#include <gtest/gtest.h>

#include "HelpHistory.h"

namespace {

// Opens the pages as their names come; "<" goes back, ">" forward. What was shown, "-" for nothing.
QString walk(HelpHistory& history, const QString& steps) {
    QString shown;
    for (const QChar step : steps) {
        if (step == u'<' || step == u'>') {
            const FolderItem page = step == u'<' ? history.goBack() : history.goNext();
            shown += page.isNil() ? QStringLiteral("-") : page.Name();
        } else {
            history.AddToHistory(QString(step), FolderItem(QStringLiteral("/") + step));
            history.raiseIsBackHistory();
            shown += step;
        }
    }
    return shown;
}

// clang-format off
TEST(HistoryTest, GoesBackAndForward) {
    const struct { const char* why; const char* steps; const char* shown; } Cases[] = {
        {"nothing to go to",                            "<>",          "--"},
        {"one page: back shows it again, then is dead", "a<<>",        "aa--"},
        {"to the oldest and back to the newest",        "abc<<<>>>",   "abcba-bc-"},
        {"a page opened after going back lands in the middle, what lay forward stays",
                                                        "abc<<d>>",    "abcbadbc"},
        {"and behind it lies what it was opened from",  "abc<d<",      "abcbdb"},
        {"the same page twice is two entries",          "aa<<",        "aaa-"},
    };
    for (const auto& c : Cases) {
        HelpHistory history;
        EXPECT_EQ(walk(history, QString::fromLatin1(c.steps)), QString::fromLatin1(c.shown)) << c.why;
    }
}
// clang-format on

TEST(HistoryTest, FirstPageAloneDoesNotMakeBackLive) {
    HelpHistory history;
    history.AddToHistory(QStringLiteral("home"), FolderItem(QStringLiteral("/home")));
    EXPECT_FALSE(history.IsBackHistory());
    EXPECT_TRUE(history.goBack().isNil());
}

TEST(HistoryTest, ListShowsTheNewestFifteenAndBackReachesAll) {
    HelpHistory history;
    walk(history, QStringLiteral("abcdefghijklmnopqrst"));
    const auto entries = history.listed();
    ASSERT_EQ(entries.size(), 15U);
    EXPECT_EQ(entries.front().title, QStringLiteral("t"));
    EXPECT_TRUE(entries.front().isCurrent);
    EXPECT_FALSE(entries.back().isCurrent);
    EXPECT_EQ(walk(history, QString(19, u'<')).back(), u'a');

    HelpHistory small;
    walk(small, QStringLiteral("ab<"));
    ASSERT_EQ(small.listed().size(), 2U) << "the empty element at the end has no row";
    EXPECT_TRUE(small.listed()[1].isCurrent);
}

}  // namespace
