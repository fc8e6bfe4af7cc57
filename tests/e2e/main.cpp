#include "shell/Application.h"
#include "support/TestEnvironment.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // What the program plays is written to a file, in real time.
    const orvel::test::TestEnvironment environment;
    orvel::Application::prepare();
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
