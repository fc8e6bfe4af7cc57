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

// In the order in which they are told. A stream tells those that it has, each once, and all before the first
// packet.
enum class AudioFileStreamProperty {
    DataFormat,
    FormatList,
    DataOffset,
    AudioDataByteCount,
    ReadyToProducePackets,
};

// Called from inside parseBytes and finish, on the thread that calls these. The stream must not be destroyed
// meanwhile.
class AudioFileStreamClient
{
public:
    virtual ~AudioFileStreamClient() = default;
    virtual void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) = 0;
    // `descriptions` is empty when every packet has the same size (the format's bytesPerPacket).
    virtual void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                              std::span<const AudioStreamPacketDescription> descriptions) = 0;
};

// Where a packet's bytes begin.
struct AudioFileStreamSeek
{
    qint64 byteOffset = 0; // from dataOffset() on
    bool isEstimated = true;
};

// Finds the packets in a file or stream that is pushed in chunks of any size. One thread at a time.
class AudioFileStream
{
public:
    virtual ~AudioFileStream() = default;
    // Returns false when the bytes can't be understood, or when they would need more memory than they may
    // have.
    virtual bool parseBytes(QByteArrayView bytes) = 0;
    // The stream has ended: hands on the packets that waited for more of it. A partial packet is dropped.
    virtual void finish() = 0;

    // Returns where the packet of this number begins (the stream's first is 0), without any effect. A number
    // beyond the end is the last packet's. nullopt when it is not known, as before the first packet.
    virtual std::optional<AudioFileStreamSeek> seek(qint64 packet) const = 0;
    // The next bytes come from this offset of the file. Their first packet is the first that begins there or
    // behind. No effect when they come from there anyway.
    virtual void continueAt(qint64 fileOffset) = 0;
    // Returns the file's offset that should come next, by way of continueAt(): of an index that lies behind
    // the sound, then of the sound. It is the file's own word, and may lie behind its end. nullopt when just
    // the next byte should come. Who can't jump goes on pushing, and the stream holds the bytes until the
    // index comes, or fails when they are too many. The end of the file is not the end of the sound while an
    // offset is wanted.
    virtual std::optional<qint64> wantedOffset() const { return std::nullopt; }

    // nullopt before it was told, as the others that follow.
    virtual std::optional<AudioStreamBasicDescription> dataFormat() const = 0;
    // Playable formats, best first; empty when the plain data format is the only one.
    virtual std::vector<AudioStreamBasicDescription> formatList() const { return {}; }
    // The file's offset of the first packet.
    virtual std::optional<qint64> dataOffset() const { return std::nullopt; }
    // From the first packet's first byte to the last one's end. nullopt when the file does not say it.
    virtual std::optional<quint64> audioDataByteCount() const { return std::nullopt; }
    // In bytes; nullopt for packets of constant size, and for a stream that does not know it.
    virtual std::optional<quint32> packetSizeUpperBound() const { return std::nullopt; }
    // In bytes; of a stream that does not know its packets, what the format allows when it is much. nullopt
    // else.
    virtual std::optional<quint32> maximumPacketSize() const { return std::nullopt; }
    virtual QByteArray magicCookie() const { return {}; } // empty when there is none
    virtual std::optional<AudioTrim> trim() const { return std::nullopt; }
};

// Returns nullptr when the stream can't be opened. `client` must outlive the stream.
using AudioFileStreamOpener =
    std::function<std::unique_ptr<AudioFileStream>(AudioFileStreamClient &client, AudioFileType hint)>;

} // namespace orvel
