#include "support/PulseServer.h"

#include "support/SoundComparison.h"
#include "support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>

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

PulseServer::PulseServer(Kind kind)
    : m_kind(kind), m_address("PULSE_SERVER", "unix:" + socket(QStringLiteral("players")).toUtf8())
{
}

PulseServer::~PulseServer() { end(m_process); }

bool PulseServer::isThere(Kind kind)
{
    const auto isInstalled = [](const char *name) { return !QStandardPaths::findExecutable(name).isEmpty(); };
    return isInstalled("parec") &&
           (kind == Kind::PulseAudio ? isInstalled("pulseaudio")
                                     : isInstalled("pipewire-pulse") && isInstalled("wireplumber"));
}

bool PulseServer::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
        environment.insert(name, m_path);
    for (const char *name : {"PULSE_SERVER", "DBUS_SESSION_BUS_ADDRESS", "DISPLAY"})
        environment.remove(name);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    for (const char *name : {"control", "players"}) // of a server that was killed
        QFile::remove(socket(name));
    const bool isThere =
        startCommand(m_process, command()) && waitUntil([&] {
            return m_process.state() != QProcess::Running || QFile::exists(socket("control"));
        }) &&
        m_process.state() == QProcess::Running;
    if (isThere && m_kind == Kind::PipeWire) {
        pactl("load-module module-null-sink sink_name=nowhere rate=44100 channels=2");
        pactl("set-default-sink nowhere");
    }
    return isThere;
}

// All its processes end with the one that is started.
QString PulseServer::command() const
{
    if (m_kind == Kind::PulseAudio)
        return QStringLiteral("pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 "
                              "--high-priority=no -L \"%1\" "
                              "-L \"module-native-protocol-unix auth-anonymous=1 socket=%2\"")
            .arg(sinkIn(m_path), socket(QStringLiteral("control")));

    const auto configure = [&](const QString &program, const QString &text) {
        const QString folder = m_path + "/pipewire/" + program + ".conf.d";
        QDir().mkpath(folder);
        QFile file(folder + "/test.conf");
        file.open(QIODevice::WriteOnly);
        file.write(text.toUtf8());
    };
    configure("pipewire", "context.properties = { default.clock.rate = 44100 }");
    configure("pipewire-pulse",
              QStringLiteral("pulse.properties = { server.address = [ \"unix:%1\" \"unix:%2\" ] }")
                  .arg(socket("control"), socket("players")));
    QFile script(m_path + "/start");
    script.open(QIODevice::WriteOnly);
    script.write("export DBUS_SESSION_BUS_ADDRESS=unix:path=$HOME/bus\n"
                 "run() { setpriv --pdeathsig KILL \"$@\" & }\n"
                 "run dbus-daemon --session --nofork --nopidfile --address=$DBUS_SESSION_BUS_ADDRESS\n"
                 "run pipewire\n"
                 "while [ ! -e $HOME/bus ] || [ ! -e $HOME/pipewire-0 ]; do sleep 0.02; done\n"
                 "run wireplumber\n"
                 "exec pipewire-pulse\n");
    return "sh " + script.fileName();
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
    return samplesIn(m_folder.filePath(QStringLiteral("recorded")));
}

} // namespace orvel::test
