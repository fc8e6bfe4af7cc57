#include "tools/stream/FileCommand.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioDeviceChoice.h"

#include <cmath>

namespace orvel {

namespace {

constexpr double seekTickSeconds = 0.05; // while a seek waits to be possible
constexpr double progressSeconds = 1;
constexpr double shortestSeekable = 1; // seconds; below it the length is not known yet

const char *name(AudioStreamerState state)
{
    switch (state) {
    case AudioStreamerStateInitialized:
        return "idle";
    case AudioStreamerStateStartingThread:
        return "starting";
    case AudioStreamerStateWaitingForData:
        return "waiting";
    case AudioStreamerStateFlushingEndOfFile:
        return "flushing";
    case AudioStreamerStateWaitingForQueueStart:
        return "opening";
    case AudioStreamerStatePlaying:
        return "playing";
    case AudioStreamerStateBuffering:
        return "buffering";
    case AudioStreamerStateStopping:
        return "stopping";
    case AudioStreamerStateStopped:
        return "stopped";
    case AudioStreamerStatePaused:
        return "paused";
    }
    return "";
}

// Of a streamer with an error code.
Outcome outcomeOf(AudioStreamerErrorCode code)
{
    const QString text = stringForErrorCode(code);
    switch (code) {
    case AudioStreamerErrorNetworkConnection:
        return Outcome::failure(ExitCode::Unreachable, text);
    case AudioStreamerErrorFileStreamGetProperty:
    case AudioStreamerErrorFileStreamParseBytes:
    case AudioStreamerErrorFileStreamOpen:
    case AudioStreamerErrorAudioDataNotFound:
    case AudioStreamerErrorBufferTooSmall:
        return Outcome::failure(ExitCode::NoSound, text);
    default:
        return Outcome::failure(ExitCode::NoOutput, text);
    }
}

} // namespace

FileCommand::~FileCommand()
{
    RunLoop::main().cancel(m_ticks);
    NotificationCentre::defaultCentre().removeObserver(this);
}

void FileCommand::start()
{
    m_start = RunLoop::main().now();
    if (arguments().seconds)
        after(*arguments().seconds, [this] {
            end(m_hasSounded ? Outcome()
                             : Outcome::failure(ExitCode::TimedOut,
                                                QStringLiteral("The time was up before any sound.")));
        });
    NotificationCentre &centre = NotificationCentre::defaultCentre();
    centre.addObserver(this, noSoundDeviceNotification, [](const Notification &) {
        Output::complain(QStringLiteral("There is no sound device; the file plays on in silence."));
    });
    centre.addObserver(this, ASStatusChangedNotification, [this](const Notification &) { stateChanged(); });
    m_hasSought = !arguments().seek;
    m_streamer = AudioStreamer::initWithURL(*arguments().url);
    m_streamer->start();
    m_ticks = RunLoop::main().every(m_hasSought ? progressSeconds : seekTickSeconds, [this] { tick(); });
}

void FileCommand::stateChanged()
{
    if (m_hasEnded)
        return;
    const AudioStreamerState state = m_streamer->state();
    if (std::exchange(m_toldState, state) == state)
        return;
    tell("state", {{QStringLiteral("state"), QString::fromLatin1(name(state))}});
    if (state == AudioStreamerStatePlaying) {
        m_hasSounded = true;
        seekOnce();
    } else if (state == AudioStreamerStateInitialized) {
        if (m_streamer->errorCode() != AudioStreamerErrorNone)
            end(outcomeOf(m_streamer->errorCode()));
        else
            end(m_hasSounded ? Outcome()
                             : Outcome::failure(ExitCode::NoSound,
                                                QStringLiteral("The file ended before any sound.")));
    }
}

void FileCommand::tick()
{
    if (!m_hasSought)
        seekOnce();
    else if (m_streamer->isPlaying())
        tell("progress",
             {{QStringLiteral("progress"), Output::seconds(m_streamer->progress())},
              {QStringLiteral("duration"), Output::seconds(m_streamer->duration())},
              {QStringLiteral("bitrate"), qint64(std::llround(m_streamer->calculatedBitRate()))}});
}

void FileCommand::seekOnce()
{
    if (m_hasSought || !m_streamer->isPlaying() || m_streamer->duration() < shortestSeekable)
        return;
    m_hasSought = true;
    RunLoop::main().cancel(m_ticks);
    m_ticks = RunLoop::main().every(progressSeconds, [this] { tick(); });
    tell("seek", {{QStringLiteral("seek"), Output::seconds(*arguments().seek)}});
    m_streamer->seekToTime(*arguments().seek);
}

void FileCommand::tell(const char *event, const Output::Fields &fields)
{
    output().event(RunLoop::main().now() - m_start, QString::fromLatin1(event), fields);
    if (output().hasFailed())
        end(Outcome::failure(ExitCode::CannotWrite, QStringLiteral("stdout can't be written.")));
}

void FileCommand::end(const Outcome &outcome)
{
    if (std::exchange(m_hasEnded, true))
        return;
    RunLoop::main().cancel(m_ticks);
    if (output().isJson()) {
        if (!outcome.sentence.isEmpty())
            tell("error", {{QStringLiteral("error"), m_streamer ? int(m_streamer->errorCode()) : 0},
                           {QStringLiteral("message"), outcome.sentence}});
        tell("end", {{QStringLiteral("status"), outcome.exitStatus}});
    }
    if (m_streamer) // a signal may come before the start
        m_streamer->stop();
    finish(outcome);
}

} // namespace orvel
