#include "support/PulseServer.h"

#include "support/TestLoop.h"

#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <cstring>

namespace orvel::test {

namespace {

// Plays into a pipe that nobody reads, by the clock. Unlike that of a sink to nowhere its monitor is exact:
// it never takes back what a recorder already has.
QString sinkIn(const QString &folder)
{
    return QStringLiteral("module-pipe-sink sink_name=nowhere use_system_clock_for_timing=yes "
                          "format=float32le rate=44100 channels=2 file=%1/pipe")
        .arg(folder);
}

// Ends with this program.
bool startCommand(QProcess &process, const QString &command)
{
    process.startCommand("setpriv --pdeathsig KILL " + command);
    return process.waitForStarted();
}

void end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    ::kill(pid_t(process.processId()), SIGKILL);
    process.waitForFinished();
}

} // namespace

PulseServer::PulseServer() : m_address("PULSE_SERVER", "unix:" + socket(QStringLiteral("players")).toUtf8())
{
}

PulseServer::~PulseServer() { end(m_process); }

bool PulseServer::isThere()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pulseaudio")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("parec")).isEmpty();
}

bool PulseServer::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR"})
        environment.insert(name, m_path);
    for (const char *name : {"PULSE_SERVER", "DBUS_SESSION_BUS_ADDRESS", "DISPLAY"})
        environment.remove(name);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    for (const char *name : {"control", "players"}) // of a server that was killed
        QFile::remove(socket(name));
    const auto command = QStringLiteral(
        "pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --high-priority=no "
        "-L \"%1\" -L \"module-native-protocol-unix auth-anonymous=1 socket=%2\"");
    return startCommand(m_process, command.arg(sinkIn(m_path), socket(QStringLiteral("control")))) &&
           waitUntil([&] {
               return m_process.state() != QProcess::Running ||
                      QFile::exists(socket(QStringLiteral("control")));
           }) &&
           m_process.state() == QProcess::Running;
}

void PulseServer::answerPlayers() const
{
    pactl("load-module module-native-protocol-unix auth-anonymous=1 socket=" +
          socket(QStringLiteral("players")));
}

void PulseServer::kill() { end(m_process); }

void PulseServer::addSink() const { pactl("load-module " + sinkIn(m_path)); }

void PulseServer::pactl(const QString &arguments) const
{
    QProcess process;
    process.startCommand("pactl --server=unix:" + socket(QStringLiteral("control")) + u' ' + arguments);
    process.waitForFinished();
}

void PulseServer::play(QProcess &process, const QString &role) const
{
    process.setStandardInputFile(QStringLiteral("/dev/zero"));
    startCommand(process, QStringLiteral("pacat --raw --server=unix:%1 --property=media.role=%2")
                              .arg(socket(QStringLiteral("control")), role));
}

SinkRecorder::SinkRecorder(const PulseServer &server, int latency)
{
    m_process.setStandardOutputFile(m_folder.filePath(QStringLiteral("recorded")));
    startCommand(m_process,
                 QStringLiteral("parec --server=unix:%1/control --raw --format=float32le --rate=44100 "
                                "--channels=2 -d nowhere.monitor --latency-msec=%2")
                     .arg(server.folder())
                     .arg(latency));
    waitUntil([this] { return !samples().empty(); });
}

SinkRecorder::~SinkRecorder() { end(m_process); }

std::vector<float> SinkRecorder::soundUntilSilence() const
{
    const auto isSound = [](float sample) { return sample != 0; };
    std::vector<float> recorded;
    waitUntil([&] {
        recorded = samples();
        const auto last = std::find_if(recorded.rbegin(), recorded.rend(), isSound);
        return last != recorded.rend() && last - recorded.rbegin() > 44100;
    });
    return recorded;
}

std::vector<float> SinkRecorder::samples() const
{
    QFile file(m_folder.filePath(QStringLiteral("recorded")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    std::vector<float> samples(std::size_t(bytes.size()) / sizeof(float));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

} // namespace orvel::test
