#include "platform/media/parse/AudioSpecificConfig.h"

#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/ConstantFormat.h"

#include <array>

namespace orvel {

namespace {

// Returns the body of the descriptor at the reader's front; empty when that has another tag.
QByteArrayView descriptorBody(ByteReader &reader, quint8 tag)
{
    if (reader.u8() != tag)
        return {};
    quint32 size = 0;
    for (int i = 0; i < 4; ++i) {
        const quint8 byte = reader.u8();
        size = size << 7 | (byte & 0x7Fu);
        if (!(byte & 0x80))
            break;
    }
    return reader.take(size);
}

class BitReader
{
public:
    explicit BitReader(QByteArrayView bytes) : m_bytes(bytes) {}
    // Zeros beyond the end.
    quint32 bits(int count)
    {
        quint32 value = 0;
        for (; count > 0; --count, ++m_at) {
            const bool isThere = m_at / 8 < m_bytes.size();
            const quint32 byte = isThere ? quint8(m_bytes[m_at / 8]) : 0;
            value = value << 1 | (byte >> (7 - m_at % 8) & 1);
        }
        return value;
    }

private:
    QByteArrayView m_bytes;
    qsizetype m_at = 0;
};

} // namespace

QByteArrayView audioSpecificConfigIn(QByteArrayView elementaryStreamDescriptor)
{
    enum Tag : quint8 { ElementaryStream = 3, DecoderConfig = 4, DecoderSpecific = 5 };
    enum Flag : quint8 { DependsOnStream = 0x80, HasUrl = 0x40, HasClock = 0x20 };

    ByteReader reader(elementaryStreamDescriptor);
    ByteReader stream(descriptorBody(reader, ElementaryStream));
    stream.skip(2); // number
    const quint8 flags = stream.u8();
    if (flags & DependsOnStream)
        stream.skip(2);
    if (flags & HasUrl)
        stream.skip(stream.u8());
    if (flags & HasClock)
        stream.skip(2);
    ByteReader decoder(descriptorBody(stream, DecoderConfig));
    const quint8 objectType = decoder.u8();
    const bool isAac = objectType == 0x40 || (objectType >= 0x66 && objectType <= 0x68);
    decoder.skip(12); // kind of stream, buffer size, bit rates
    return isAac ? descriptorBody(decoder, DecoderSpecific) : QByteArrayView();
}

std::optional<AudioStreamBasicDescription> aacFormat(QByteArrayView config, quint32 channels)
{
    static constexpr std::array<quint32, 13> rates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                                      22050, 16000, 12000, 11025, 8000,  7350};
    static constexpr std::array<quint32, 15> channelCounts = {0, 1, 2, 3, 4, 5, 6, 8, 0, 0, 0, 7, 8, 24, 8};
    constexpr qsizetype leastConfigBytes = 2;
    constexpr quint32 rateElsewhere = 15;
    enum ObjectType : quint32 { Escape = 31, BandReplication = 5, ParametricStereo = 29 };

    if (config.size() < leastConfigBytes)
        return std::nullopt;
    BitReader reader(config);
    const auto objectType = [&reader] {
        const quint32 type = reader.bits(5);
        return type == Escape ? 32 + reader.bits(6) : type;
    };
    const auto sampleRate = [&reader] {
        const quint32 index = reader.bits(4);
        return index == rateElsewhere ? reader.bits(24) : index < rates.size() ? rates[index] : 0;
    };
    const quint32 type = objectType();
    const quint32 rate = sampleRate();
    const quint32 channelIndex = reader.bits(4);
    if (type == BandReplication || type == ParametricStereo) {
        sampleRate(); // the doubled one
        objectType();
    }
    const bool hasShortFrames = reader.bits(1);
    if (channelIndex > 0)
        channels = channelIndex < channelCounts.size() ? channelCounts[channelIndex] : 0;
    const AudioStreamBasicDescription format{.sampleRate = double(rate),
                                             .format = AudioFormat::mpeg4Aac,
                                             .framesPerPacket = hasShortFrames ? 960u : 1024u,
                                             .channelsPerFrame = channels};
    return isPlausible(format) ? std::optional(format) : std::nullopt;
}

} // namespace orvel
