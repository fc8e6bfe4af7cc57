#pragma once

#include <span>

namespace orvel {

// Applies a volume to the samples of one block after another. Spreads a change over a whole block, so that it
// does not click. One thread.
class VolumeRamp
{
public:
    explicit VolumeRamp(float volume) : m_gain(volume) {}

    void apply(std::span<float> samples, float volume)
    {
        if (m_gain != 1 || volume != 1) {
            const float step = samples.empty() ? 0 : (volume - m_gain) / float(samples.size());
            for (std::size_t i = 0; i < samples.size(); ++i)
                samples[i] *= m_gain + step * float(i + 1);
        }
        m_gain = volume;
    }

private:
    float m_gain; // of the last sample
};

} // namespace orvel
