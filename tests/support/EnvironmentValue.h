#pragma once

#include <QByteArray>

namespace orvel::test {

// An environment variable of a test's time. A null value: there is none of that name.
class EnvironmentValue
{
public:
    EnvironmentValue(const char *name, const QByteArray &value) : m_name(name), m_before(qgetenv(name))
    {
        set(value);
    }
    ~EnvironmentValue() { set(m_before); }
    EnvironmentValue(const EnvironmentValue &) = delete;
    EnvironmentValue &operator=(const EnvironmentValue &) = delete;

private:
    void set(const QByteArray &value) const { value.isNull() ? qunsetenv(m_name) : qputenv(m_name, value); }

    const char *const m_name;
    const QByteArray m_before;
};

// Plays on the silent device.
struct SilentDevice : EnvironmentValue
{
    SilentDevice() : EnvironmentValue("ORVEL_AUDIO_DEVICE", "null") {}
};

} // namespace orvel::test
