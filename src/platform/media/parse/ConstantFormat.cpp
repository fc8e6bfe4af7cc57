#include "platform/media/parse/ConstantFormat.h"

#include <cmath>

namespace orvel {

std::optional<AudioStreamBasicDescription> pcmFormat(double sampleRate, quint32 channels, quint32 bits,
                                                     SampleType type, std::endian order)
{
    const bool isFloat = type == SampleType::FloatingPoint;
    if (isFloat ? bits != 32 && bits != 64 : bits < 1 || bits > 32)
        return std::nullopt;
    const quint32 bytes = (bits + 7) / 8;
    const AudioStreamBasicDescription format{.sampleRate = sampleRate,
                                             .format = AudioFormat::linearPcm,
                                             .bytesPerPacket = bytes * channels,
                                             .framesPerPacket = 1,
                                             .channelsPerFrame = channels,
                                             .bitsPerChannel = 8 * bytes,
                                             .sampleType = type,
                                             .byteOrder = order};
    return isPlausible(format) ? std::optional(format) : std::nullopt;
}

std::optional<AudioStreamBasicDescription> lawFormat(double sampleRate, quint32 channels, AudioFormat law)
{
    const AudioStreamBasicDescription format{.sampleRate = sampleRate,
                                             .format = law,
                                             .bytesPerPacket = channels,
                                             .framesPerPacket = 1,
                                             .channelsPerFrame = channels};
    return isPlausible(format) ? std::optional(format) : std::nullopt;
}

bool isPlausible(const AudioStreamBasicDescription &format)
{
    return std::isfinite(format.sampleRate) && format.sampleRate >= 1 && format.sampleRate <= 10e6 &&
           format.channelsPerFrame >= 1 && format.channelsPerFrame <= 64;
}

} // namespace orvel
