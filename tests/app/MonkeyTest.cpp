// Nobody in particular at the controls, and a line that does what it likes: whatever is pressed, typed or
// pulled out, the program neither fails nor leaves anything behind. VLX_MONKEY_SEEDS and VLX_MONKEY_STEPS
// make it longer.
#include <random>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

int fromEnvironment(const char* name, int otherwise) {
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : otherwise;
}

class Monkey {
public:
    explicit Monkey(unsigned seed) : m_random(seed) {}

    void run(int steps) {
        m_bench.start();
        for (int step = 0; step < steps; ++step) {
            act();
            m_bench.clock().advance(std::chrono::milliseconds(below(200)));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (!m_bench.window().isVisible())
                startAnew();
        }
        settle();
    }

private:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    template <typename T>
    T* anyOf(const QList<T*>& list) {
        return list.isEmpty() ? nullptr : list[below(static_cast<int>(list.size()))];
    }

    void act() {
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        QWidget* front = QApplication::activeModalWidget();
        if (!front)
            front = &m_bench.window();
        const std::function<void()> ways[] = {
            [this] { disturbTheLine(); },
            [this] {
                m_bench.dialogs().files = {m_bench.dataFolder() + QStringLiteral("/saved.VLXConfig")};
                m_bench.dialogs().cautionAnswers = {below(2) == 0};
            },
            [this] { m_bench.chooseTab(static_cast<Tab>(below(5))); },
            [this] { chooseMenu(); },
            [&] { pressKey(*front); },
            [&] { pressKey(*front); },
            [&] { click(*front); },
            [&] { click(*front); },
            [&] { click(*front); }};
        ways[below(static_cast<int>(std::size(ways)))]();
    }

    void click(QWidget& front) {
        QList<QAbstractButton*> buttons = front.findChildren<QAbstractButton*>();
        buttons.removeIf(
            [](const QAbstractButton* button) { return !button->isVisible() || !button->isEnabled(); });
        QAbstractButton* button = anyOf(buttons);
        if (button && below(4) > 0)
            QTest::mouseClick(button, Qt::LeftButton);
        else if (button)
            QTest::mouseDClick(button, Qt::LeftButton);
    }

    void pressKey(QWidget& front) {
        static constexpr std::array Keys{Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
                                         Qt::Key_Down,  Qt::Key_A,      Qt::Key_X,      Qt::Key_V};
        static constexpr std::array Modifiers{Qt::NoModifier, Qt::ControlModifier, Qt::AltModifier};
        QWidget* focused = front.focusWidget() ? front.focusWidget() : &front;
        if (below(2) == 0)
            typeKey(*focused, QString(QChar(static_cast<char16_t>(below(0x180)))), 0);
        else
            QTest::keyClick(focused, Keys[static_cast<std::size_t>(below(Keys.size()))],
                            Modifiers[static_cast<std::size_t>(below(Modifiers.size()))]);
    }

    void chooseMenu() {
        QList<QAction*> items = m_bench.window().findChildren<QAction*>();
        items.removeIf(
            [](const QAction* item) { return item->objectName().isEmpty() || !item->isEnabled(); });
        if (QAction* item = anyOf(items); item && !QApplication::activeModalWidget())
            item->trigger();
    }

    void disturbTheLine() {
        SimulatedPort& port = m_bench.port();
        Vlx720& amplifier = m_bench.amplifier();
        const std::function<void()> ways[] = {[&] { port.unplug(); },
                                              [&] { port.replug(); },
                                              [&] { port.replug(); },
                                              [&] { amplifier.powerOff(); },
                                              [&] { amplifier.powerOn(); },
                                              [&] { amplifier.pressPowerButton(); },
                                              [this] { makeNoise(); },
                                              [&] {
                                                  if (amplifier.state() == Vlx720::State::Main)
                                                      amplifier.raiseFault(1 + below(15));
                                              }};
        ways[below(static_cast<int>(std::size(ways)))]();
    }

    void makeNoise() {
        QByteArray noise = QList<QByteArray>{"^BN", "^BN99;", "^FL99;", "^OS9;", ";;;", "^VI;"}[below(6)];
        for (int byte = below(40); byte > 0; --byte)
            noise += static_cast<char>(below(256));
        m_bench.amplifier().emitNoise(noise);
    }

    void startAnew() {
        settle();
        m_bench.quit();
        m_bench.start();
    }

    // Windows that wait for the user are closed, and work that must end has its time.
    void settle() {
        m_bench.port().replug();
        for (int attempt = 0; attempt < 200; ++attempt) {
            if (QWidget* front = QApplication::activeModalWidget())
                front->close();
            m_bench.dialogs().cautionAnswers = {false};
            m_bench.clock().advance(5s);
            if (!QApplication::activeModalWidget())
                return;
        }
        ADD_FAILURE() << "a window could not be closed";
    }

    std::mt19937 m_random;
    AppBench m_bench;
};

TEST(MonkeyTest, NothingThatIsPressedTypedOrPulledOutBreaksTheProgram) {
    const int seeds = fromEnvironment("VLX_MONKEY_SEEDS", 2);
    const int steps = fromEnvironment("VLX_MONKEY_STEPS", 300);
    for (int seed = 1; seed <= seeds; ++seed) {
        SCOPED_TRACE(seed);
        Monkey(static_cast<unsigned>(seed)).run(steps);
    }
}

}  // namespace
