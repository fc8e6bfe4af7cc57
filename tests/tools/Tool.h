#pragma once

#include "api/json/JsonValue.h"

#include <QProcess>
#include <QStringList>
#include <memory>
#include <vector>

namespace orvel {
class DemoStation;
}

namespace orvel::test {

// The real orvel-stream at work, without a sound device.
class Tool
{
public:
    explicit Tool(const QStringList &arguments);

    // Waits until stdout has this text.
    bool says(const QByteArray &text);
    // Waits until one of the files that it has open has this size.
    bool writes(qint64 bytes);
    void signal(int number);
    // Waits for the end. Returns the exit status; -1 when it has not ended of itself.
    int status();
    // So far.
    const QByteArray &out();
    const QByteArray &errors();
    // Of a tool that prints JSON: one value a line.
    std::vector<JsonValue> objects();
    // The first event of this name; absent when there is none.
    JsonValue event(const QString &name);

private:
    bool waitFor(const std::function<bool()> &condition);

    QProcess m_process;
    QByteArray m_out;
    QByteArray m_errors;
};

// One station for all tests of the program.
DemoStation &station();
// A stream of the station; `query` asks for a fault.
QString stationStream(const QString &name, const QString &query = {});

} // namespace orvel::test
