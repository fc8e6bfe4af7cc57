#pragma once

#include <QTemporaryDir>

namespace orvel::test {

// What a test program needs before it makes its application: settings, caches and captured sound of its own,
// and neither a display nor a sound device. What the environment names already stays, but for the folders.
class TestEnvironment
{
public:
    TestEnvironment()
    {
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            qputenv(name, m_home.path().toUtf8());
        set("QT_QPA_PLATFORM", "offscreen");
        set("QT_QUICK_BACKEND", "software");
        set("SDL_AUDIODRIVER", "disk");
        set("SDL_DISKAUDIOFILE", m_home.filePath(QStringLiteral("sound.raw")).toUtf8());
    }

private:
    static void set(const char *name, const QByteArray &value)
    {
        if (qEnvironmentVariableIsEmpty(name))
            qputenv(name, value);
    }
    const QTemporaryDir m_home;
};

} // namespace orvel::test
