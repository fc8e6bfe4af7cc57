#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    orvel::RunLoop::main();
    orvel::MainQueue::open();
    const int result = RUN_ALL_TESTS();
    orvel::MainQueue::close();
    return result;
}
