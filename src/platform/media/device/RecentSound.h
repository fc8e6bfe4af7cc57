#pragma once

#include <QtGlobal>
#include <algorithm>
#include <vector>

namespace orvel {

// Keeps the last frames of a sound that was written, for who sends them, and some of them again. Counts are
// in frames from the first on. One thread at a time.
class RecentSound
{
public:
    RecentSound(qint64 frames, int channels)
        : m_frames(frames), m_channels(channels), m_samples(std::size_t(frames * channels))
    {
    }

    qint64 written() const { return m_written; }
    qint64 size() const { return m_frames; }

    // Overwrites the oldest frames. At most size() at a time.
    void append(const float *samples, qint64 frames)
    {
        eachPart(m_written, frames, [&](qint64 at, qint64 done, qint64 count) {
            std::copy_n(samples + done * m_channels, count * m_channels, m_samples.data() + at * m_channels);
        });
        m_written += frames;
    }

    // Copies frames that are still kept.
    void copy(qint64 from, qint64 frames, float *samples) const
    {
        eachPart(from, frames, [&](qint64 at, qint64 done, qint64 count) {
            std::copy_n(m_samples.data() + at * m_channels, count * m_channels, samples + done * m_channels);
        });
    }

private:
    // The runs of the store that hold these frames, one or two.
    template<typename Function>
    void eachPart(qint64 from, qint64 frames, const Function &function) const
    {
        const qint64 at = from % m_frames;
        const qint64 first = std::min(frames, m_frames - at);
        function(at, qint64(0), first);
        function(qint64(0), first, frames - first);
    }

    const qint64 m_frames;
    const qint64 m_channels;
    std::vector<float> m_samples;
    qint64 m_written = 0;
};

} // namespace orvel
