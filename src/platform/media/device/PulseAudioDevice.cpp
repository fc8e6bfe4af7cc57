#include "platform/media/device/PulseAudioDevice.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace orvel {

namespace {

using std::chrono::milliseconds;

// Less than the server's longest sink and its queue for the stream hold would end the sound between two of
// its requests.
constexpr double keptSeconds = 4;
constexpr milliseconds serverQueue(1000);
constexpr milliseconds startLevel(50);
// From what is heard now to the first frame that can still be exchanged for a louder or softer one.
constexpr milliseconds exchangeDelay(30);
constexpr milliseconds volumeRamp(20);
constexpr milliseconds endDelay(30);
// Sent in one piece while the queue still decodes.
constexpr milliseconds piece(250);

void ignore(pa_operation *operation)
{
    if (operation)
        pa_operation_unref(operation);
}

QByteArray nameOf(const QString &name)
{
    return (name.isEmpty() ? QCoreApplication::applicationName() : name).toUtf8();
}

} // namespace

AudioBackEnd::Opening PulseAudioDevice::open(const AudioDeviceRequest &request)
{
    // Who names a driver of SDL's wants SDL.
    if (!qEnvironmentVariableIsEmpty("SDL_AUDIODRIVER"))
        return {};
    std::unique_ptr<PulseAudioDevice> device(new PulseAudioDevice(request));
    device->m_isAdded = PulseAudioServer::instance().add(*device);
    if (!device->m_isAdded)
        return {};
    return {std::move(device)};
}

PulseAudioDevice::PulseAudioDevice(const AudioDeviceRequest &request)
    : AudioDevice(request)
    , m_volume(*request.volume)
    , m_wantsData(request.wantsData)
    , m_interrupted(request.interrupted)
    , m_standing(milliseconds(qint64(1000 * request.standingSeconds)))
    , m_mediaName(nameOf(request.mediaName))
    , m_sound(qint64(std::max(keptSeconds, request.ringSeconds + 2.5) * request.sampleRate),
              request.sampleRate, request.channels, *request.volume)
{
    m_goneAt = Clock::now(); // until there is a stream
    countSilenceFromNow();
}

PulseAudioDevice::~PulseAudioDevice()
{
    if (!m_isAdded)
        return;
    const PulseAudioServer::Lock lock;
    PulseAudioServer &server = PulseAudioServer::instance();
    server.remove(*this);
    if (m_isInterrupted && m_stream)
        server.awaitUncork(std::move(m_stream), [interrupted = m_interrupted] { interrupted(false); });
    m_stream.reset();
}

void PulseAudioDevice::setPlaying(bool playing)
{
    const PulseAudioServer::Lock lock;
    if (playing != m_isPlaying) {
        noteHeard();
        m_isPlaying = playing;
        countSilenceFromNow();
    }
    followTransport();
    if (!m_isCorked)
        send();
}

qint64 PulseAudioDevice::write(const float *samples, qint64 frames)
{
    const PulseAudioServer::Lock lock;
    noteHeard();
    if (m_heard == written())
        countSilenceFromNow(); // after a gap the clock does not catch up
    frames = std::clamp<qint64>(room(), 0, frames);
    m_sound.append(samples, frames);
    if (!m_isCorked && written() - m_sound.sent() >= framesIn(piece))
        send();
    return frames;
}

qint64 PulseAudioDevice::consumed() const
{
    const PulseAudioServer::Lock lock;
    noteHeard();
    return m_heard;
}

std::optional<qint64> PulseAudioDevice::framesUntilRefill() const
{
    const PulseAudioServer::Lock lock;
    if (!isGone())
        return std::nullopt; // the server asks
    noteHeard();
    return written() - m_heard - capacity() / 2;
}

bool PulseAudioDevice::isStanding() const
{
    const PulseAudioServer::Lock lock;
    return m_isInterrupted || (isGone() ? Clock::now() < m_silentSince : m_isCorked);
}

void PulseAudioDevice::followVolume()
{
    const PulseAudioServer::Lock lock;
    const float volume = m_volume;
    if (volume == m_sound.volume())
        return;
    noteHeard();
    const qint64 from = m_sound.changeVolume(volume, m_heard + framesIn(exchangeDelay), framesIn(volumeRamp));
    if (isReady())
        m_sound.sendAgain(*m_stream, from);
}

void PulseAudioDevice::setMediaName(const QString &name)
{
    const PulseAudioServer::Lock lock;
    m_mediaName = nameOf(name);
    if (isReady())
        ignore(pa_stream_set_name(m_stream.get(), m_mediaName.constData(), nullptr, nullptr));
}

void PulseAudioDevice::serverAnswers(pa_context &context)
{
    if (!isGone() && !isSpent())
        return;
    noteHeard();
    m_heard = isSpent() ? m_sound.sent() : m_heard;
    m_sound.restart(m_heard);
    m_isCorked = true;
    m_isUnderrun = m_isDrained = false;
    m_stream = newStream(context);
    if (!m_stream || !connectStream())
        PulseAudioServer::instance().streamHasFailed();
}

PulseAudioHandle<pa_stream> PulseAudioDevice::newStream(pa_context &context)
{
    const pa_sample_spec sampleFormat{PA_SAMPLE_FLOAT32NE, uint32_t(sampleRate()), uint8_t(channels())};
    PulseAudioHandle<pa_proplist> properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_MEDIA_ROLE, "music");
    PulseAudioHandle<pa_stream> stream(pa_stream_new_with_proplist(&context, m_mediaName.constData(),
                                                                   &sampleFormat, nullptr, properties.get()));
    if (!stream)
        return nullptr;
    pa_stream_set_state_callback(
        stream.get(), [](pa_stream *, void *device) { static_cast<PulseAudioDevice *>(device)->onState(); },
        this);
    pa_stream_set_write_callback(
        stream.get(),
        [](pa_stream *, std::size_t, void *device) { static_cast<PulseAudioDevice *>(device)->onRequest(); },
        this);
    pa_stream_set_underflow_callback(
        stream.get(),
        [](pa_stream *, void *device) { static_cast<PulseAudioDevice *>(device)->onUnderflow(); }, this);
    pa_stream_set_started_callback(
        stream.get(),
        [](pa_stream *, void *device) { static_cast<PulseAudioDevice *>(device)->m_isUnderrun = false; },
        this);
    pa_stream_set_event_callback(
        stream.get(),
        [](pa_stream *, const char *event, pa_proplist *, void *device) {
            static_cast<PulseAudioDevice *>(device)->onEvent(event);
        },
        this);
    return stream;
}

bool PulseAudioDevice::connectStream()
{
    constexpr auto byServer = uint32_t(-1);
    const auto bytes = [&](Clock::duration time) { return uint32_t(m_sound.bytesOf(framesIn(time))); };
    // PulseAudio's own least request lets its sink sleep for nearly the whole queue. PipeWire's would wake it
    // and this program 50 times a second.
    const uint32_t leastRequest =
        PulseAudioServer::instance().isPipeWire() ? bytes(serverQueue / 4) : byServer;
    const pa_buffer_attr buffer{.maxlength = byServer,
                                .tlength = bytes(serverQueue),
                                .prebuf = bytes(startLevel),
                                .minreq = leastRequest,
                                .fragsize = byServer};
    // An uncorked start loses the frames that an idle sink has already passed.
    constexpr int flags =
        PA_STREAM_START_CORKED | PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE;
    return pa_stream_connect_playback(m_stream.get(), nullptr, &buffer, pa_stream_flags_t(flags), nullptr,
                                      nullptr) == 0;
}

void PulseAudioDevice::onState()
{
    const pa_stream_state_t state = pa_stream_get_state(m_stream.get());
    if (state == PA_STREAM_READY) {
        PulseAudioServer::instance().streamWorks();
        followTransport();
    } else if (!PA_STREAM_IS_GOOD(state)) {
        beginSilence();
        PulseAudioServer::instance().streamHasFailed();
    }
}

void PulseAudioDevice::onRequest()
{
    if (!m_isCorked)
        send();
    if (room() >= capacity() / 4)
        m_wantsData();
}

// PipeWire keeps what does not fill one of its cycles until more comes, or until it is told that this is all.
// A stream that was told plays nothing that follows whole.
void PulseAudioDevice::onUnderflow()
{
    m_isUnderrun = true;
    if (PulseAudioServer::instance().isPipeWire() && !m_isCorked && written() == m_sound.sent()) {
        m_isDrained = true;
        ignore(pa_stream_drain(m_stream.get(), nullptr, nullptr));
    }
}

void PulseAudioDevice::onEvent(const char *name)
{
    const bool begins = qstrcmp(name, PA_STREAM_EVENT_REQUEST_CORK) == 0;
    if (begins == m_isInterrupted || (!begins && qstrcmp(name, PA_STREAM_EVENT_REQUEST_UNCORK) != 0))
        return;
    noteHeard();
    m_isInterrupted = begins;
    followTransport();
    m_interrupted(begins);
    m_wantsData();
}

bool PulseAudioDevice::isReady() const
{
    return m_stream && pa_stream_get_state(m_stream.get()) == PA_STREAM_READY;
}

bool PulseAudioDevice::isGone() const
{
    return !m_stream || !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get()));
}

void PulseAudioDevice::beginSilence()
{
    m_goneAt = Clock::now();
    // The stream no longer tells its time.
    if (isToSound() && !m_isUnderrun)
        m_heard =
            std::clamp(m_heard + framesIn(m_goneAt - m_seen), m_heard, std::max(m_heard, m_sound.sent()));
    if (std::exchange(m_isInterrupted, false))
        m_interrupted(false);
    countSilenceFromNow();
    m_wantsData();
}

void PulseAudioDevice::countSilenceFromNow()
{
    m_silentFrom = m_heard;
    m_silentSince = std::max(Clock::now(), m_goneAt + m_standing);
}

void PulseAudioDevice::noteHeard() const
{
    const Clock::time_point now = Clock::now();
    if (!isToSound())
        return;
    if (isGone()) {
        const qint64 due = m_silentFrom + framesIn(std::max(now - m_silentSince, Clock::duration()));
        m_heard = std::clamp(due, m_heard, written());
    } else if (const auto due = isReady() ? m_sound.heard(*m_stream) : std::nullopt) {
        m_heard = std::clamp(*due, m_heard, std::max(m_heard, beforeEnd(*due)));
    }
    m_seen = now;
}

// The most that can have been heard. The position is an estimate, and who closes the device at the end cuts
// off what is still to be heard: the last frame counts a moment after it is due.
qint64 PulseAudioDevice::beforeEnd(qint64 due) const
{
    const Clock::time_point now = Clock::now();
    if (due < m_sound.sent() || m_endOf != m_sound.sent()) {
        m_endOf = due < m_sound.sent() ? -1 : m_sound.sent();
        m_endSeen = now;
    }
    return due < m_sound.sent() || now - m_endSeen >= endDelay ? m_sound.sent() : m_sound.sent() - 1;
}

// Frames that write() takes.
qint64 PulseAudioDevice::room() const
{
    return std::min(capacity() - (written() - taken()), m_sound.room(m_heard));
}

// The frames that the server's sink has taken, or that have passed in silence.
qint64 PulseAudioDevice::taken() const
{
    if (isGone())
        return m_heard;
    if (!isReady())
        return m_sound.sent();
    const std::size_t asked = pa_stream_writable_size(m_stream.get());
    const std::size_t queue = pa_stream_get_buffer_attr(m_stream.get())->tlength;
    return std::max(m_heard, m_sound.sent() - m_sound.framesOf(queue - std::min(queue, asked)));
}

void PulseAudioDevice::send()
{
    if (!isReady())
        return;
    const qint64 frames =
        std::min(written() - m_sound.sent(), m_sound.framesOf(pa_stream_writable_size(m_stream.get())));
    if (isSpent())
        PulseAudioServer::instance().streamIsSpent();
    if (frames <= 0 || isSpent())
        return;
    m_sound.send(*m_stream, frames);
    if (m_isUnderrun)
        ignore(pa_stream_trigger(m_stream.get(), nullptr, nullptr));
}

// Corks or uncorks the stream. Only the first frames are sent to a corked stream: what comes shortly before a
// cork may end an underrun, and the server then drops what it has in the sink.
void PulseAudioDevice::followTransport()
{
    const bool corks = !isToSound();
    if (!isReady() || corks == m_isCorked)
        return;
    if (!corks && m_sound.sentToStream() == 0)
        send();
    if (!corks && m_sound.sentToStream() == 0)
        return;
    m_isCorked = corks;
    ignore(pa_stream_cork(m_stream.get(), corks, nullptr, nullptr));
    if (corks)
        return;
    // A sound shorter than the start level would wait for ever.
    if (m_sound.sentToStream() < framesIn(startLevel))
        ignore(pa_stream_trigger(m_stream.get(), nullptr, nullptr));
    m_wantsData();
}

qint64 PulseAudioDevice::framesIn(Clock::duration time) const
{
    return qint64(std::chrono::duration<double>(time).count() * sampleRate());
}

} // namespace orvel
