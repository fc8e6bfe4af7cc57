#pragma once

#include <QtGlobal>
#include <algorithm>
#include <atomic>
#include <vector>

namespace orvel {

// Hands interleaved samples from one writing thread to one reading thread, without locks. Counts are in
// frames.
class PcmRing
{
public:
    PcmRing(qint64 frames, int channels)
        : m_frames(frames), m_channels(channels), m_samples(std::size_t(frames * channels))
    {
    }

    qint64 written() const { return m_written.load(std::memory_order_acquire); }
    qint64 consumed() const { return m_consumed.load(std::memory_order_acquire); }
    qint64 available() const { return written() - consumed(); }

    // Returns the number of frames that there was room for. Writing thread only.
    qint64 write(const float *samples, qint64 frames)
    {
        const qint64 at = m_written.load(std::memory_order_relaxed);
        frames = std::min(frames, m_frames - (at - consumed()));
        const auto [first, second] = parts(at, frames);
        std::copy_n(samples, first * m_channels, m_samples.data() + at % m_frames * m_channels);
        std::copy_n(samples + first * m_channels, second * m_channels, m_samples.data());
        m_written.store(at + frames, std::memory_order_release);
        return frames;
    }

    // Returns the number of frames that there were. Reading thread only.
    qint64 read(float *samples, qint64 frames)
    {
        const qint64 at = m_consumed.load(std::memory_order_relaxed);
        frames = std::min(frames, written() - at);
        const auto [first, second] = parts(at, frames);
        std::copy_n(m_samples.data() + at % m_frames * m_channels, first * m_channels, samples);
        std::copy_n(m_samples.data(), second * m_channels, samples + first * m_channels);
        m_consumed.store(at + frames, std::memory_order_release);
        return frames;
    }

private:
    struct Parts
    {
        qint64 upToTheEnd;
        qint64 fromTheStart;
    };
    Parts parts(qint64 at, qint64 frames) const
    {
        const qint64 first = std::min(frames, m_frames - at % m_frames);
        return {first, frames - first};
    }

    const qint64 m_frames;
    const qint64 m_channels;
    std::vector<float> m_samples;
    std::atomic<qint64> m_written = 0;
    std::atomic<qint64> m_consumed = 0;
};

} // namespace orvel
