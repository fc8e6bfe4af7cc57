#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // Settings and caches of a test are its own.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_CACHE_HOME", home.path().toUtf8());
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
