#include "FuzzSupport.h"
#include "platform/media/parse/FramedAudioFileStream.h"

#include <vector>

using namespace orvel;
using fuzz::ChunkedInput;
using fuzz::require;

namespace {

struct Packet
{
    QByteArray bytes;
    quint32 frames = 0;

    bool operator==(const Packet &) const = default;
};

struct Found
{
    std::optional<AudioStreamBasicDescription> format;
    std::vector<AudioStreamBasicDescription> formats;
    std::vector<Packet> packets;

    bool operator==(const Found &) const = default;
};

class Finder : public AudioFileStreamClient
{
public:
    void take(QByteArrayView chunk) { require(m_stream->parseBytes(chunk), "an endless stream has no end"); }
    void end() { m_stream->finish(); }
    Found found;

private:
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override
    {
        require(!found.format, "no property comes after ready");
        if (property == AudioFileStreamProperty::FormatList) {
            found.formats = stream.formatList();
            require(!found.formats.empty(), "an announced format list has formats");
        }
        if (property != AudioFileStreamProperty::ReadyToProducePackets)
            return;
        found.format = stream.dataFormat();
        require(found.format && found.format->sampleRate > 0 && found.format->channelsPerFrame > 0,
                "a ready stream has a format");
    }

    void handlePacket(AudioFileStream &, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override
    {
        require(found.format.has_value(), "ready comes before any packet");
        require(numberOfPackets == descriptions.size(), "each packet has a description");
        for (const AudioStreamPacketDescription &packet : descriptions) {
            const qint64 start = packet.startOffset;
            require(start >= 0 && packet.dataByteSize > 0 && start + packet.dataByteSize <= inputData.size(),
                    "a packet lies within the data");
            found.packets.push_back(
                {inputData.sliced(start, packet.dataByteSize).toByteArray(), packet.variableFramesInPacket});
        }
    }

    std::unique_ptr<AudioFileStream> m_stream = openFramedAudioFileStream(*this, AudioFileType::none);
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ChunkedInput input(fuzz::viewOf(data, size));
    const Found found = input.sameThroughAnyChunks([&input](ChunkedInput::Feed feed) {
        Finder finder;
        (input.*feed)([&finder](QByteArrayView chunk) { finder.take(chunk); });
        finder.end();
        return finder.found;
    });
    qsizetype at = 0;
    for (const Packet &packet : found.packets) {
        const qsizetype place = input.bytes().indexOf(packet.bytes, at);
        require(place >= 0, "packets come from the stream, in its order");
        at = place + packet.bytes.size();
    }
    return 0;
}
