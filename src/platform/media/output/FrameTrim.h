#pragma once

#include "platform/media/codec/AudioTypes.h"
#include "platform/media/codec/SampleConverter.h"

#include <optional>

namespace orvel {

// Leaves out what an encoder has added to a sound. One thread.
class FrameTrim
{
public:
    void set(const std::optional<AudioTrim> &trim) { m_trim = trim.value_or(AudioTrim()); }
    // The next frame is the first.
    void restart() { m_decoded = 0; }
    // Returns the part of the next decoded frame that belongs to the sound.
    SampleConverter::Part part(const AVFrame &frame);

private:
    AudioTrim m_trim;
    qint64 m_decoded = 0; // sample frames so far
};

} // namespace orvel
