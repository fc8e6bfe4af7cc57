#include "platform/media/device/SentSound.h"

#include <algorithm>

namespace orvel {

SentSound::SentSound(qint64 keptFrames, int sampleRate, int channels, float volume)
    : m_sampleRate(sampleRate)
    , m_channels(channels)
    , m_frameBytes(std::size_t(channels) * sizeof(float))
    , m_recent(keptFrames, channels)
    , m_curve(volume)
{
}

void SentSound::send(pa_stream &stream, qint64 frames)
{
    put(stream, m_sent, frames, PA_SEEK_RELATIVE);
    m_sent += frames;
}

qint64 SentSound::changeVolume(float volume, qint64 from, qint64 ramp)
{
    const qint64 first = std::min(m_sent, std::max(m_origin, from));
    m_curve.change(volume, first, ramp);
    return first;
}

void SentSound::sendAgain(pa_stream &stream, qint64 from) const
{
    put(stream, from, m_sent - from, PA_SEEK_ABSOLUTE);
}

std::optional<qint64> SentSound::heard(pa_stream &stream) const
{
    const pa_timing_info *timing = pa_stream_get_timing_info(&stream);
    if (timing && !timing->playing && timing->since_underrun >= 0) {
        // Nothing follows what was read, which leaves the sink bit by bit. The stream's time would stay
        // behind by what the sink still holds.
        const qint64 elapsed = qint64(pa_timeval_age(&timing->timestamp));
        const qint64 behind = qint64(timing->sink_usec) - elapsed;
        const qint64 read = timing->read_index / qint64(m_frameBytes);
        const qint64 silence = timing->since_underrun / qint64(m_frameBytes);
        return m_origin + std::min(read, read + silence - behind * m_sampleRate / 1'000'000);
    }
    pa_usec_t time = 0;
    if (pa_stream_get_time(&stream, &time) < 0)
        return std::nullopt;
    return m_origin + qint64(time) * m_sampleRate / 1'000'000;
}

void SentSound::put(pa_stream &stream, qint64 from, qint64 frames, pa_seek_mode_t mode) const
{
    while (frames > 0) {
        void *data = nullptr;
        std::size_t bytes = bytesOf(frames);
        if (pa_stream_begin_write(&stream, &data, &bytes) < 0)
            return;
        const qint64 count = framesOf(bytes);
        auto *samples = static_cast<float *>(data);
        m_recent.copy(from, count, samples);
        m_curve.apply(samples, from, count, m_channels);
        const int64_t offset = mode == PA_SEEK_ABSOLUTE ? (from - m_origin) * int64_t(m_frameBytes) : 0;
        pa_stream_write(&stream, data, bytesOf(count), nullptr, offset, mode);
        mode = PA_SEEK_RELATIVE;
        from += count;
        frames -= count;
    }
}

} // namespace orvel
