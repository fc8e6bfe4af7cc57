#pragma once

#include "platform/media/codec/AudioTypes.h"

namespace orvel {

// A format with one frame in a packet: linear PCM of 8 to 32 bits, rounded up to whole bytes, or of 64 bits
// when it is floating point. nullopt when it can't be true.
std::optional<AudioStreamBasicDescription> pcmFormat(double sampleRate, quint32 channels, quint32 bits,
                                                     SampleType type, std::endian order);
// A-law or mu-law: a byte a sample. nullopt when it can't be true.
std::optional<AudioStreamBasicDescription> lawFormat(double sampleRate, quint32 channels, AudioFormat law);

// Whether a format has a sample rate and channels that can be true.
bool isPlausible(const AudioStreamBasicDescription &format);

} // namespace orvel
