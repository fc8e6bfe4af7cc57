#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"
#include "support/TestEnvironment.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const orvel::test::TestEnvironment environment;
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("OrvelTests"));
    QCoreApplication::setApplicationName(QStringLiteral("tests"));
    orvel::RunLoop::main();
    orvel::MainQueue::open();
    const int result = RUN_ALL_TESTS();
    orvel::SerialQueue::joinThreads();
    orvel::MainQueue::close();
    return result;
}
