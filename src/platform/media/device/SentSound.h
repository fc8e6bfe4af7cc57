#pragma once

#include "platform/media/device/RecentSound.h"
#include "platform/media/device/VolumeCurve.h"

#include <optional>
#include <pulse/pulseaudio.h>

namespace orvel {

// The sound of a device, which is sent to one stream of the sound server after another, each from a frame on.
// Keeps the last of it, so that it can be sent again. Counts are in frames of the sound. With the server's
// lock held, except for written().
class SentSound
{
public:
    SentSound(qint64 keptFrames, int sampleRate, int channels, float volume);

    qint64 written() const { return m_recent.written(); }
    // The frames that append() takes when those in front of `heard` are not needed any more.
    qint64 room(qint64 heard) const { return m_recent.size() - (written() - heard); }
    void append(const float *samples, qint64 frames) { m_recent.append(samples, frames); }

    qint64 sent() const { return m_sent; }
    // Frames that the stream has been sent.
    qint64 sentToStream() const { return m_sent - m_origin; }
    // A new stream is sent the sound from this frame on.
    void restart(qint64 from) { m_origin = m_sent = from; }
    // Sends the frames behind those that were sent.
    void send(pa_stream &stream, qint64 frames);

    float volume() const { return m_curve.volume(); }
    // Changes the volume over `ramp` frames, from this frame on where it was sent to the stream, or at the
    // nearest to it. Returns the change's first frame.
    qint64 changeVolume(float volume, qint64 from, qint64 ramp);
    // Sends again what was sent from this frame on.
    void sendAgain(pa_stream &stream, qint64 from) const;

    // The frame up to which the stream has been heard, an estimate. nullopt while the server has not said.
    std::optional<qint64> heard(pa_stream &stream) const;

    std::size_t bytesOf(qint64 frames) const { return std::size_t(frames) * m_frameBytes; }
    qint64 framesOf(std::size_t bytes) const { return qint64(bytes / m_frameBytes); }

private:
    void put(pa_stream &stream, qint64 from, qint64 frames, pa_seek_mode_t mode) const;

    const int m_sampleRate;
    const int m_channels;
    const std::size_t m_frameBytes;
    RecentSound m_recent;
    VolumeCurve m_curve;
    qint64 m_origin = 0; // the stream's first frame
    qint64 m_sent = 0;
};

} // namespace orvel
