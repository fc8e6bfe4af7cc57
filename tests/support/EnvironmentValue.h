#pragma once

#include <QByteArray>

namespace orvel::test {

// An environment variable of a test's time.
class EnvironmentValue
{
public:
    EnvironmentValue(const char *name, const QByteArray &value) : m_name(name), m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~EnvironmentValue() { m_before.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_before); }
    EnvironmentValue(const EnvironmentValue &) = delete;
    EnvironmentValue &operator=(const EnvironmentValue &) = delete;

private:
    const char *const m_name;
    const QByteArray m_before;
};

// Plays on the silent device.
struct SilentDevice : EnvironmentValue
{
    SilentDevice() : EnvironmentValue("ORVEL_AUDIO_DEVICE", "null") {}
};

} // namespace orvel::test
