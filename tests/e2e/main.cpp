#include "shell/Application.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_CACHE_HOME", home.path().toUtf8());
    // What the program plays is written to a file, in real time.
    qputenv("SDL_DISKAUDIOFILE", home.filePath(QStringLiteral("sound.raw")).toUtf8());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    orvel::Application::prepare();
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
