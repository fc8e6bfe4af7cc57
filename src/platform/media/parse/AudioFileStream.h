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

// Called from inside parseBytes, on the thread that pushes the bytes. The stream must not be destroyed
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

// Finds the packets in a byte stream that is pushed in chunks of any size.
class AudioFileStream
{
public:
    virtual ~AudioFileStream() = default;
    // False when the stream can't be understood any more.
    virtual bool parseBytes(QByteArrayView bytes) = 0;

    virtual std::optional<AudioStreamBasicDescription> dataFormat() const = 0;
    // Playable formats, best first; empty when the plain data format is the only one.
    virtual std::vector<AudioStreamBasicDescription> formatList() const = 0;
    // Bytes; nothing for an endless stream, whose packets have no known bound.
    virtual std::optional<quint32> packetSizeUpperBound() const = 0;
    virtual QByteArray magicCookie() const = 0; // empty when there is none
};

// Gives nothing when the stream can't be opened. `client` must outlive the stream.
using AudioFileStreamOpener =
    std::function<std::unique_ptr<AudioFileStream>(AudioFileStreamClient &client, AudioFileType hint)>;

// MPEG 1, 2 and 2.5 layer III (ISO/IEC 11172-3, 13818-3) and AAC in ADTS (ISO/IEC 13818-7, 14496-3). The
// frames are found by their sync words, which can't be mistaken for each other, so a server's wrong content
// type does no harm. ID3 tags and garbage are skipped: the first frame, and the first one after garbage, is
// handed on when the next header confirms it, the others as soon as they are whole. An AAC packet is a whole
// ADTS frame with its header, so there is no magic cookie. Null for a hint at any other type.
std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint);

} // namespace orvel
