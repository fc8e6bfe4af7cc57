#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"
#include "support/TestEnvironment.h"

#include <gtest/gtest.h>
#ifdef QT_GUI_LIB // what is compiled into a program that draws
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const orvel::test::TestEnvironment environment;
    const Application application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("OrvelTests"));
    QCoreApplication::setApplicationName(QStringLiteral("tests"));
    orvel::RunLoop::main();
    orvel::MainQueue::open();
    const int result = RUN_ALL_TESTS();
    orvel::SerialQueue::joinThreads();
    orvel::MainQueue::close();
    return result;
}
