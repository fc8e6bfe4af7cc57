#include "tools/Tool.h"

#include "api/json/JsonText.h"
#include "demo/DemoStation.h"

#include <QDeadlineTimer>
#include <QDir>
#include <algorithm>
#include <csignal>

namespace orvel::test {

Tool::Tool(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ORVEL_AUDIO_DEVICE"), QStringLiteral("null"));
    m_process.setProcessEnvironment(environment);
    m_process.start(QStringLiteral(ORVEL_STREAM), arguments);
    m_process.waitForStarted();
}

bool Tool::waitFor(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(40));
    while (!condition()) {
        if (deadline.hasExpired() || m_process.state() == QProcess::NotRunning)
            return condition();
        m_process.waitForReadyRead(50);
    }
    return true;
}

bool Tool::says(const QByteArray &text)
{
    return waitFor([&] { return out().contains(text); });
}

bool Tool::writes(qint64 bytes)
{
    const QDir open(QStringLiteral("/proc/%1/fd").arg(m_process.processId()));
    return waitFor([&] {
        const QFileInfoList files = open.entryInfoList(QDir::Files | QDir::System);
        return std::ranges::any_of(files, [&](const QFileInfo &file) { return file.size() == bytes; });
    });
}

void Tool::signal(int number) { ::kill(pid_t(m_process.processId()), number); }

int Tool::status()
{
    waitFor([&] { return m_process.state() == QProcess::NotRunning; });
    const bool ended =
        m_process.state() == QProcess::NotRunning && m_process.exitStatus() == QProcess::NormalExit;
    return ended ? m_process.exitCode() : -1;
}

const QByteArray &Tool::out() { return m_out.append(m_process.readAllStandardOutput()); }

const QByteArray &Tool::errors() { return m_errors.append(m_process.readAllStandardError()); }

std::vector<JsonValue> Tool::objects()
{
    std::vector<JsonValue> objects;
    for (const QByteArray &line : out().split('\n'))
        if (!line.isEmpty())
            objects.push_back(JSONValue(line));
    return objects;
}

JsonValue Tool::event(const QString &name)
{
    for (const JsonValue &object : objects())
        if (object["event"].string() == name)
            return object;
    return {};
}

DemoStation &station()
{
    static const std::unique_ptr<DemoStation> station = DemoStation::start({});
    return *station;
}

QString stationStream(const QString &name, const QString &query)
{
    const QString first = station().streamUrl(station().radioIds().front());
    const QString url = first.left(first.lastIndexOf(u'/') + 1) + name;
    return query.isEmpty() ? url : url + u'?' + query;
}

} // namespace orvel::test
