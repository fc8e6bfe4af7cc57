#pragma once

#include <QtGlobal>
#include <algorithm>

namespace orvel {

// The volume of each frame of a sound that is sent ahead: the last change, spread over some frames. One
// thread at a time.
class VolumeCurve
{
public:
    explicit VolumeCurve(float volume) : m_before(volume), m_after(volume) {}

    // The volume in the end.
    float volume() const { return m_after; }
    // Changes the volume from a frame on that is not before the last change.
    void change(float volume, qint64 from, qint64 frames)
    {
        m_before = at(from);
        m_after = volume;
        m_from = from;
        m_frames = frames;
    }

    void apply(float *samples, qint64 from, qint64 frames, int channels) const
    {
        const qint64 ramped = std::clamp<qint64>(m_from + m_frames - from, 0, frames);
        for (qint64 i = 0; i < ramped; ++i, samples += channels)
            scale(samples, channels, at(from + i));
        if (m_after != 1)
            scale(samples, (frames - ramped) * channels, m_after);
    }

private:
    float at(qint64 frame) const
    {
        if (frame >= m_from + m_frames)
            return m_after;
        const qint64 step = std::max<qint64>(frame - m_from, 0);
        return m_before + (m_after - m_before) * float(step) / float(m_frames);
    }
    static void scale(float *samples, qint64 count, float volume)
    {
        for (qint64 i = 0; i < count; ++i)
            samples[i] *= volume;
    }

    float m_before;
    float m_after;
    qint64 m_from = 0; // the change's first frame
    qint64 m_frames = 0;
};

} // namespace orvel
