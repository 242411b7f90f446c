// What every window has in it, by name: its text, state, keys and what is told to a screen reader.
#include <map>
#include <optional>

#include <QPointer>

#include "AppBench.h"
#include "GoldenFile.h"
#include "WidgetWords.h"

namespace {

using namespace std::chrono_literals;

bool isOurs(const QObject& item) {
    const QString name = item.objectName();
    const auto* widget = qobject_cast<const QWidget*>(&item);
    const bool isPage = widget && widget->layout() && !widget->isHidden();
    return (!name.isEmpty() || isPage) && !name.startsWith(QStringLiteral("qt_")) &&
           !item.parent()->inherits("QTabBar");
}

class GoldenWindow : public testing::Test {
protected:
    void note(const QObject& item) {
        // What differs from run to run is left out.
        const QString line = wordsOf(item).replace(bench->dataFolder(), QStringLiteral("DATA"));
        auto& [alive, last] = m_last[&item];  // another may have stood in its place
        const bool isKnown = std::exchange(alive, &item) == &item;
        if (std::exchange(last, line) != line || !isKnown)
            seen += line;
    }
    // What has a name in the windows that are shown, and is not as it was when it was last noted.
    void noteWindows(const char* when, std::chrono::milliseconds later = 1500ms) {
        bench->clock().advance(later);
        seen += QStringLiteral("---- ") + QString::fromLatin1(when);
        QWidgetList windows = QApplication::topLevelWidgets();
        std::ranges::sort(windows, {}, &QObject::objectName);
        for (const QWidget* window : std::as_const(windows)) {
            if (!window->isVisible() || window->objectName().isEmpty())
                continue;
            note(*window);
            seen += QDebug::toString(window->size());
            for (const QObject* item : window->findChildren<QObject*>())
                if ((item->isWidgetType() || item->inherits("QAction")) && isOurs(*item))
                    note(*item);
        }
    }
    void noteTabs(const char* when) {
        seen += QStringLiteral("-------- ") + QString::fromLatin1(when);
        for (const Tab tab :
             {Tab::Port, Tab::Firmware, Tab::Operate, Tab::Configuration, Tab::CommandTester}) {
            bench->chooseTab(tab);
            noteWindows("tab");
        }
    }
    void begin(const Vlx720::Settings& settings) {
        m_last.clear();
        bench.reset();
        bench.emplace(settings);
        bench->start();
    }
    void choose(const char* action) {
        bench->window().findChild<QAction*>(QString::fromLatin1(action))->trigger();
    }

    std::optional<AppBench> bench{std::in_place, Tab::Operate};
    QStringList seen;

private:
    std::map<const QObject*, std::pair<QPointer<const QObject>, QString>> m_last;
};

TEST_F(GoldenWindow, HasWhatItHad) {
    noteTabs("with the main firmware");
    for (const char* tool : {"EditBannerButton", "DisplayFaultTable"}) {
        bench->press(QString::fromLatin1(tool));
        noteWindows(tool, 10ms);
        noteWindows(tool, 5s);
        bench->window()
            .findChild<QDialog*>(QString::fromLatin1(tool[0] == 'E' ? "BannerWindow" : "FaultTableWindow"))
            ->close();
        noteWindows(tool, 5s);
    }
    bench->press(QStringLiteral("EditMacrosButton"));
    noteWindows("macros");
    choose("ViewTrends");
    choose("HelpAboutVLXUtil");
    noteWindows("trends and about");
    bench->amplifier().raiseFault(9);
    bench->chooseTab(Tab::Operate);
    noteWindows("a fault");
    bench->amplifier().powerOff();
    bench->clock().advance(10s);
    bench->amplifier().powerOn();
    noteTabs("with the loader");
    bench->port().unplug();
    noteTabs("with no port");
    begin({.state = Vlx720::State::Waiting});
    noteTabs("begun with the loader");
    begin({.state = Vlx720::State::Off});
    noteTabs("begun with no answer");
    compareWithGolden(QStringLiteral(VLX_WINDOW_GOLDENS "/windows.txt"), seen.join(u'\n').toUtf8() + '\n');
}

}  // namespace
