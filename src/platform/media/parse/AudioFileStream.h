#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QByteArrayView>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace orvel {

class AudioFileStream;

enum class AudioFileStreamProperty { FormatList, ReadyToProducePackets };

// Called from inside parseBytes and finish, on the thread that calls these. The stream must not be destroyed
// meanwhile.
class AudioFileStreamClient
{
public:
    virtual ~AudioFileStreamClient() = default;
    // FormatList, when there is one (HE-AAC), comes before ReadyToProducePackets, which comes once, before
    // any packet.
    virtual void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) = 0;
    // `descriptions` is empty when every packet has the same size (constant bit rate).
    virtual void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                              std::span<const AudioStreamPacketDescription> descriptions) = 0;
};

// Where a packet's bytes begin.
struct AudioFileStreamSeek
{
    qint64 byteOffset = 0; // from the first packet's first byte on
    bool isEstimated = true;
};

// Finds the packets in a byte stream that is pushed in chunks of any size. One thread at a time.
class AudioFileStream
{
public:
    virtual ~AudioFileStream() = default;
    // False when the stream can't be understood any more.
    virtual bool parseBytes(QByteArrayView bytes) = 0;
    // The stream has ended: hands on the packets that waited for more of it. A partial packet is dropped.
    virtual void finish() = 0;
    // Returns where to go on for the packet of this number (the stream's first is 0), and takes the next
    // bytes for those from there, or from thereabouts when that is an estimate. nullopt, without any effect,
    // when it is not known, as before the first packet.
    virtual std::optional<AudioFileStreamSeek> seek(qint64 packet) = 0;

    // nullopt before ReadyToProducePackets.
    virtual std::optional<AudioStreamBasicDescription> dataFormat() const = 0;
    // Playable formats, best first; empty when the plain data format is the only one.
    virtual std::vector<AudioStreamBasicDescription> formatList() const = 0;
    // In bytes; nullopt for an endless stream, whose packets have no known bound.
    virtual std::optional<quint32> packetSizeUpperBound() const = 0;
    virtual QByteArray magicCookie() const = 0; // empty when there is none
};

// Returns nullptr when the stream can't be opened. `client` must outlive the stream.
using AudioFileStreamOpener =
    std::function<std::unique_ptr<AudioFileStream>(AudioFileStreamClient &client, AudioFileType hint)>;

// Opens MPEG 1, 2 and 2.5 layer III (ISO/IEC 11172-3, 13818-3) and AAC in ADTS (ISO/IEC 13818-7, 14496-3).
// Returns nullptr for a hint at any other type. Frames are found by their sync words, which can't be mistaken
// for each other, so a server's wrong content type does no harm. ID3 tags and garbage are skipped. The first
// frame, and the first one after garbage, is handed on when what follows it confirms it, the others as soon
// as they are whole. An AAC packet is a whole ADTS frame with its header, so there is no magic cookie. Seeks
// are estimates from the mean size of the packets so far.
std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint);

} // namespace orvel
