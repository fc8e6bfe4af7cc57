#include "FuzzSupport.h"
#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/codec/FfmpegHandles.h"
#include "platform/media/codec/SampleConverter.h"
#include "platform/media/parse/AudioFileStreamOpener.h"

#include <algorithm>
#include <cmath>

using namespace orvel;
using fuzz::ChunkedInput;
using fuzz::require;

namespace {

constexpr auto hint = AudioFileType::FUZZED_TYPE;

struct Found
{
    bool isUnderstood = true;
    std::vector<AudioFileStreamProperty> properties;
    std::optional<AudioStreamBasicDescription> format;
    std::vector<AudioStreamBasicDescription> formats;
    QByteArray cookie;
    std::optional<AudioTrim> trim;
    QByteArray sound;                // all packets
    std::vector<quint32> sizes = {}; // of packets that vary

    bool operator==(const Found &) const = default;
};

class Finder : public AudioFileStreamClient
{
public:
    void take(QByteArrayView chunk)
    {
        found.isUnderstood = m_stream->parseBytes(chunk) && found.isUnderstood;
    }
    Found end()
    {
        m_stream->finish();
        if (m_isReady) {
            found.format = m_stream->dataFormat();
            found.formats = m_stream->formatList();
            found.cookie = m_stream->magicCookie();
            found.trim = m_stream->trim();
        }
        return found;
    }
    // Goes on with the bytes from there.
    Found jump(QByteArrayView file, qint64 offset)
    {
        found.sound.clear();
        found.sizes.clear();
        m_stream->continueAt(offset);
        if (offset < file.size())
            take(file.sliced(offset));
        m_stream->finish();
        return found;
    }
    AudioFileStream &stream() { return *m_stream; }

    Found found;

private:
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override
    {
        using enum AudioFileStreamProperty;
        require(!m_isReady, "no property comes after ready");
        require(found.properties.empty() || found.properties.back() < property,
                "properties come in their order");
        found.properties.push_back(property);
        m_isReady = property == ReadyToProducePackets;
        const auto format = stream.dataFormat();
        require(format && format->sampleRate > 0 && format->channelsPerFrame > 0, "a format is one");
        require(property != FormatList || !stream.formatList().empty(), "a format list has formats");
        require(property != DataOffset || stream.dataOffset() >= 0, "sound begins in the file");
        require(property != AudioDataByteCount || stream.audioDataByteCount().has_value(),
                "sound has a size");
    }

    void handlePacket(AudioFileStream &stream, quint32 count, QByteArrayView bytes,
                      std::span<const AudioStreamPacketDescription> descriptions) override
    {
        require(m_isReady, "ready comes before any packet");
        require(count > 0, "packets come");
        if (const quint32 size = stream.dataFormat()->bytesPerPacket; size > 0) {
            require(descriptions.empty() && bytes.size() == qsizetype(count) * size,
                    "constant packets are whole");
            require(!stream.packetSizeUpperBound(), "constant packets have no bound");
            found.sound += bytes;
            return;
        }
        require(count == descriptions.size(), "each packet has a description");
        for (const AudioStreamPacketDescription &packet : descriptions) {
            const qint64 start = packet.startOffset;
            require(start >= 0 && packet.dataByteSize > 0 && start + packet.dataByteSize <= bytes.size(),
                    "a packet lies within the data");
            found.sound += bytes.sliced(start, packet.dataByteSize);
            found.sizes.push_back(packet.dataByteSize);
        }
    }

    std::unique_ptr<AudioFileStream> m_stream = openAudioFileStream(*this, hint);
    bool m_isReady = false;
};

void checkPlace(QByteArrayView file, const Found &found)
{
    qsizetype at = 0;
    qsizetype inSound = 0;
    for (const quint32 size : found.sizes) {
        const qsizetype place = file.indexOf(QByteArrayView(found.sound).sliced(inSound, size), at);
        require(place >= 0, "packets come from the file, in its order");
        inSound += size;
        at = place + size;
    }
    require(!found.sizes.empty() || found.sound.isEmpty() || file.contains(found.sound),
            "sound is all in one");
}

void checkSeeks(QByteArrayView file, const Found &whole)
{
    Finder finder;
    finder.take(file);
    finder.stream().finish();
    const auto dataOffset = finder.stream().dataOffset();
    for (const qint64 packet : {qint64(0), qint64(3), qint64(1) << 40}) {
        const auto seek = finder.stream().seek(packet);
        if (!seek || !dataOffset)
            continue;
        require(seek->byteOffset >= 0, "a packet is not in front of the sound");
        const Found rest = finder.jump(file, *dataOffset + seek->byteOffset);
        if (!seek->isEstimated)
            require(whole.sound.endsWith(rest.sound) || whole.sound.size() < rest.sound.size(),
                    "an exact seek brings the same packets");
    }
    if (dataOffset)
        finder.jump(file, *dataOffset + file.size() / 3);
}

// As who can jump to what is wanted.
void checkJumps(QByteArrayView file)
{
    Finder finder;
    qint64 at = 0;
    for (int steps = 0; steps < 1000 && at < file.size(); ++steps) {
        const QByteArrayView piece = file.sliced(at).first(std::min<qsizetype>(100, file.size() - at));
        finder.take(piece);
        at += piece.size();
        const auto wanted = finder.stream().wantedOffset();
        require(!wanted || *wanted >= 0, "what is wanted lies in a file");
        if (wanted) {
            at = *wanted;
            finder.stream().continueAt(at);
        }
    }
    finder.end();
}

void checkSound(const Found &found)
{
    if (!found.format || found.sizes.empty())
        return;
    const AudioStreamBasicDescription format = found.formats.empty() ? *found.format : found.formats.front();
    const auto decoder = AudioDecoder::make(format, found.cookie);
    if (!decoder)
        return;
    SampleConverter converter(44100, 2);
    std::vector<float> samples;
    qsizetype at = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(found.sizes.size(), 8); ++i) {
        decoder->decode(QByteArrayView(found.sound).sliced(at, found.sizes[i]));
        at += found.sizes[i];
        while (const AVFrame *frame = decoder->nextFrame())
            converter.convert(*frame, {0, frame->nb_samples}, samples);
        require(samples.size() < 200'000'000 &&
                    std::ranges::all_of(samples, [](float it) { return std::isfinite(it); }),
                "samples are numbers");
        samples.clear();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ChunkedInput input(fuzz::viewOf(data, size));
    const Found found = input.sameThroughAnyChunks([&input](ChunkedInput::Feed feed) {
        Finder finder;
        (input.*feed)([&finder](QByteArrayView chunk) { finder.take(chunk); });
        return finder.end();
    });
    checkPlace(input.bytes(), found);
    checkSeeks(input.bytes(), found);
    checkJumps(input.bytes());
    checkSound(found);
    return 0;
}
