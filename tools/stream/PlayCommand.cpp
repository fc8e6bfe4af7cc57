#include "tools/stream/PlayCommand.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioDeviceChoice.h"

#include <QHostAddress>
#include <QUrl>

namespace orvel {

namespace {

// What this machine serves itself is reached without a network, so that the system need not be asked.
bool isOnThisMachine(const Url &url)
{
    const QString host = QUrl(url.text(), QUrl::StrictMode).host();
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

} // namespace

PlayCommand::~PlayCommand()
{
    NotificationCentre::defaultCentre().removeObserver(this);
    if (m_streamer)
        m_streamer->shutdown();
}

void PlayCommand::start()
{
    m_start = RunLoop::main().now();
    if (arguments().seconds)
        after(*arguments().seconds, [this] {
            end(m_hasSounded ? Outcome()
                             : Outcome::failure(ExitCode::TimedOut,
                                                QStringLiteral("The time was up before any sound.")));
        });
    NotificationCentre::defaultCentre().addObserver(
        this, noSoundDeviceNotification, [](const Notification &) {
            Output::complain(QStringLiteral("There is no sound device; the station plays on in silence."));
        });

    StreamerServices services;
    if (isOnThisMachine(*arguments().url))
        services.reachability = reachabilityForLocalStation;
    m_streamer = Streamer::initWithURL(*arguments().url, std::move(services));
    m_streamer->setDelegate(weak_from_this());
    if (arguments().volume)
        m_streamer->setVolume(*arguments().volume);
    if (arguments().bufferSeconds)
        m_streamer->setBufferInSeconds(*arguments().bufferSeconds);
    tellUrl();
    m_streamer->play();
}

void PlayCommand::radioStateChanged(Radio &radio)
{
    tellUrl();
    const RadioState state = radio.radioState();
    if (std::exchange(m_toldState, state) == state)
        return;
    tell("state", {{QStringLiteral("state"), nameOf(state)}});
    if (state == RadioStatePlaying && !std::exchange(m_hasSounded, true))
        tell("sound");
    else if (state == RadioStateError)
        end(outcomeOf(*m_streamer));
    else if (state == RadioStateStopped)
        end(m_hasSounded
                ? Outcome()
                : Outcome::failure(ExitCode::NoSound, QStringLiteral("The stream ended before any sound.")));
}

void PlayCommand::radioMetadataReady(Radio &radio)
{
    tell("station", {{QStringLiteral("name"), radio.radioName()},
                     {QStringLiteral("genre"), radio.radioGenre()},
                     {QStringLiteral("site"), radio.radioUrl()}});
}

void PlayCommand::radioTitleChanged(Radio &radio)
{
    tell("title", {{QStringLiteral("title"), radio.radioTitle()}});
}

void PlayCommand::tell(const char *event, const Output::Fields &fields)
{
    output().event(RunLoop::main().now() - m_start, QString::fromLatin1(event), fields);
    if (output().hasFailed())
        end(Outcome::failure(ExitCode::CannotWrite, QStringLiteral("stdout can't be written.")));
}

// The one that was given, and the stream's when a playlist has named it.
void PlayCommand::tellUrl()
{
    if (m_toldUrl == m_streamer->requestedUrl())
        return;
    m_toldUrl = m_streamer->requestedUrl();
    tell("url", {{QStringLiteral("url"), m_toldUrl->text()}});
}

void PlayCommand::end(const Outcome &outcome)
{
    if (std::exchange(m_hasEnded, true))
        return;
    if (output().isJson()) {
        if (!outcome.sentence.isEmpty())
            tell("error", {{QStringLiteral("error"), int(m_streamer->radioError())},
                           {QStringLiteral("message"), outcome.sentence}});
        tell("end", {{QStringLiteral("status"), outcome.exitStatus}});
    }
    if (m_streamer) // a signal may come before the start
        m_streamer->shutdown();
    finish(outcome);
}

} // namespace orvel
