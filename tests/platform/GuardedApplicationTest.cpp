#include "GuardedApplication.h"

#include <gtest/gtest.h>

#include <QTimer>

#include "Errors.h"
#include "EventLoop.h"

// This program's windows all run on the guarded application, the dialogs' tests among them.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const GuardedApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

namespace {

TEST(GuardedApplication, AnErrorInAHandlerIsHandedOnAndTheLoopGoesOn) {
    auto* application = static_cast<GuardedApplication*>(QCoreApplication::instance());
    int reported = 0;
    application->setErrorHandler([&](const std::exception_ptr& error) {
        EXPECT_THROW(std::rethrow_exception(error), NilObjectError);
        ++reported;
    });

    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer,
                     [] { throw NilObjectError(QStringLiteral("no amplifier")); });
    timer.start(0);
    bool isAlive = false;
    QTimer::singleShot(10, &timer, [&isAlive] { isAlive = true; });
    EXPECT_TRUE(turnUntil([&] { return isAlive; }));
    EXPECT_EQ(reported, 1);
    application->setErrorHandler({});
}

}  // namespace
