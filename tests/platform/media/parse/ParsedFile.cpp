#include "ParsedFile.h"

#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/codec/FfmpegHandles.h"
#include "platform/media/codec/SampleConverter.h"
#include "platform/media/output/FrameTrim.h"

#include <gtest/gtest.h>

namespace orvel::test {

void ParsedFile::handlePacket(AudioFileStream &parser, quint32 count, QByteArrayView bytes,
                              std::span<const AudioStreamPacketDescription> descriptions)
{
    EXPECT_TRUE(!properties.empty() && properties.back() == AudioFileStreamProperty::ReadyToProducePackets);
    const quint32 size = parser.dataFormat()->bytesPerPacket;
    if (size == 0) {
        EXPECT_EQ(descriptions.size(), count);
        for (const AudioStreamPacketDescription &packet : descriptions) {
            packets << bytes.sliced(packet.startOffset, packet.dataByteSize).toByteArray();
            EXPECT_LE(packet.dataByteSize, parser.packetSizeUpperBound().value_or(packet.dataByteSize));
        }
        return;
    }
    EXPECT_TRUE(descriptions.empty() && bytes.size() == qsizetype(count) * size);
    EXPECT_FALSE(parser.packetSizeUpperBound());
    for (quint32 i = 0; i < count; ++i)
        packets << bytes.sliced(qsizetype(i) * size, size).toByteArray();
}

std::vector<float> ParsedFile::decoded()
{
    stream->finish();
    if (!stream->dataFormat())
        return {};
    const auto formats = stream->formatList();
    const AudioStreamBasicDescription format = formats.empty() ? *stream->dataFormat() : formats.front();
    const auto decoder = AudioDecoder::make(format, stream->magicCookie());
    if (!decoder)
        return {};
    FrameTrim trim;
    trim.set(stream->trim());
    std::vector<float> samples;
    SampleConverter converter(int(format.sampleRate), int(format.channelsPerFrame));
    for (const QByteArray &packet : packets) {
        decoder->decode(packet);
        while (const AVFrame *frame = decoder->nextFrame())
            converter.convert(*frame, trim.part(*frame), samples);
    }
    return samples;
}

} // namespace orvel::test
