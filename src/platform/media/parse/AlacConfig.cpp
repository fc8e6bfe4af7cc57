#include "platform/media/parse/AlacConfig.h"

#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/ConstantFormat.h"

namespace orvel {

std::optional<AudioStreamBasicDescription> alacFormat(QByteArrayView config)
{
    constexpr quint32 maxFramesPerPacket = 1 << 16; // encoders use 4,096

    if (config.size() < alacConfigBytes)
        return std::nullopt;
    ByteReader reader(config);
    const quint32 framesPerPacket = reader.u32();
    reader.skip(5); // version, bit depth, coding
    const quint32 channels = reader.u8();
    reader.skip(10); // longest run, biggest packet, bit rate
    const quint32 sampleRate = reader.u32();
    const AudioStreamBasicDescription format{.sampleRate = double(sampleRate),
                                             .format = AudioFormat::appleLossless,
                                             .framesPerPacket = framesPerPacket,
                                             .channelsPerFrame = channels};
    const bool hasFrames = framesPerPacket >= 1 && framesPerPacket <= maxFramesPerPacket;
    return hasFrames && isPlausible(format) ? std::optional(format) : std::nullopt;
}

} // namespace orvel
