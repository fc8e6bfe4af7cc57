#include "FuzzSupport.h"
#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/codec/FfmpegHandles.h"
#include "platform/media/codec/SampleConverter.h"
#include "platform/media/parse/FramedAudioFileStream.h"

#include <algorithm>
#include <cmath>

using namespace orvel;
using fuzz::ChunkedInput;
using fuzz::require;

namespace {

// Packets to sound, as the output queue makes it.
class Decoding
{
public:
    explicit Decoding(const AudioStreamBasicDescription &format) : m_decoder(AudioDecoder::make(format))
    {
        require(m_decoder != nullptr, "there is a decoder for the format");
    }

    void take(QByteArrayView packet)
    {
        m_decoder->decode(packet);
        while (const AVFrame *frame = m_decoder->nextFrame())
            m_converter.convert(*frame, {0, frame->nb_samples}, m_samples);
        check();
    }
    void end()
    {
        m_converter.drain(m_samples);
        check();
    }

private:
    void check()
    {
        require(m_samples.size() % 2 == 0, "samples come in pairs");
        require(m_samples.size() < 1'000'000, "a packet does not blow up");
        require(std::all_of(m_samples.begin(), m_samples.end(),
                            [](float sample) { return std::isfinite(sample); }),
                "samples are numbers");
        m_samples.clear();
    }

    std::unique_ptr<AudioDecoder> m_decoder;
    SampleConverter m_converter{44100, 2};
    std::vector<float> m_samples;
};

class Player : public AudioFileStreamClient
{
public:
    void play(QByteArrayView bytes)
    {
        m_stream->parseBytes(bytes);
        if (m_decoding)
            m_decoding->end();
    }

private:
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override
    {
        if (property == AudioFileStreamProperty::ReadyToProducePackets)
            m_decoding.emplace(stream.formatList().empty() ? *stream.dataFormat()
                                                           : stream.formatList().front());
    }
    void handlePacket(AudioFileStream &, quint32, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override
    {
        for (const AudioStreamPacketDescription &packet : descriptions)
            m_decoding->take(inputData.sliced(packet.startOffset, packet.dataByteSize));
    }

    std::unique_ptr<AudioFileStream> m_stream = openFramedAudioFileStream(*this, AudioFileType::none);
    std::optional<Decoding> m_decoding;
};

} // namespace

// An input is played as a stream; then its chunks go to the decoder as packets, wherever they were cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ChunkedInput input(fuzz::viewOf(data, size));
    Player().play(input.bytes());

    const AudioFormat format = size % 2 == 0 ? AudioFormat::mpegLayer3 : AudioFormat::mpeg4Aac;
    Decoding decoding({.sampleRate = 44100, .format = format, .channelsPerFrame = 2});
    input.takeChunks([&decoding](QByteArrayView chunk) { decoding.take(chunk); });
    decoding.end();
    return 0;
}
