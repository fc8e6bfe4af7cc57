#pragma once

#include "audio/live/Streamer.h"
#include "support/NetworkUnderTest.h"

#include <deque>
#include <limits>

namespace orvel::test {

class FakeOutputQueue;

// What the fakes of one test share. A stream's packets are pieces of `packetSize` bytes.
struct FakeMedia
{
    AudioStreamBasicDescription format{
        .sampleRate = 1000, .format = AudioFormat::mpegLayer3, .framesPerPacket = 10};
    std::vector<AudioStreamBasicDescription> formatList;
    std::optional<quint32> upperBound;
    qsizetype packetSize = 100;
    int opens = std::numeric_limits<int>::max(); // parsers, and then no more
    bool hasFormat = true;
    bool makesQueues = true;
    bool allocates = true;
    bool enqueues = true;
    bool starts = true;

    std::vector<AudioFileType> hints;
    std::vector<qsizetype> firstPieces;     // bytes, of each parser
    bool isParserClosedInside = false;      // while it parsed
    std::shared_ptr<FakeOutputQueue> queue; // the last one made
    NetworkUnderTest network;
    StreamerServices services();
};

// Plays nothing: a test hands its buffers back one by one.
class FakeOutputQueue : public OutputQueue
{
public:
    FakeOutputQueue(FakeMedia &fake, BufferCallback bufferCallback)
        : media(fake), callback(std::move(bufferCallback))
    {
    }

    OutputBuffer *allocateBuffer(quint32 bytes) override
    {
        return media.allocates ? &buffers.emplace_back(bytes) : nullptr;
    }
    bool enqueueBuffer(OutputBuffer &buffer, std::span<const AudioStreamPacketDescription>) override
    {
        enqueued.push_back(&buffer);
        played += buffer.data.first(buffer.byteSize);
        return media.enqueues;
    }
    bool start() override
    {
        isStarted = true;
        return media.starts;
    }
    void pause() override { isStarted = false; }
    void stop(bool) override {}
    void flush() override {}
    void dispose() override { isDisposed = true; }
    void setVolume(float newVolume) override { volume = newVolume; }
    void setMagicCookie(const QByteArray &) override {}
    void addIsRunningListener(IsRunningListener) override {}
    void setTrim(const std::optional<AudioTrim> &) override {}
    void setMediaName(const QString &name) override { mediaName = name; }
    std::optional<double> currentTime() const override { return 0; }

    // The oldest buffer has been played.
    void playOne()
    {
        OutputBuffer *const buffer = enqueued.front();
        enqueued.pop_front();
        callback(*this, *buffer);
    }

    FakeMedia &media;
    BufferCallback callback;
    bool isStarted = false;
    bool isDisposed = false;
    float volume = -1;
    QString mediaName;
    QByteArray played;
    std::deque<OutputBuffer> buffers;
    std::deque<OutputBuffer *> enqueued;
};

class FakeAudioFileStream : public AudioFileStream
{
public:
    FakeAudioFileStream(FakeMedia &fake, AudioFileStreamClient &streamClient)
        : media(fake), client(streamClient)
    {
    }

    ~FakeAudioFileStream() override { media.isParserClosedInside |= isParsing; }

    bool parseBytes(QByteArrayView bytes) override
    {
        isParsing = true;
        if (!isReady) {
            media.firstPieces.push_back(bytes.size());
            isReady = true;
            if (!media.formatList.empty())
                client.handlePropertyChange(*this, AudioFileStreamProperty::FormatList);
            client.handlePropertyChange(*this, AudioFileStreamProperty::ReadyToProducePackets);
        }
        rest += bytes.toByteArray();
        std::vector<AudioStreamPacketDescription> descriptions;
        qint64 offset = 0;
        for (; offset + media.packetSize <= rest.size(); offset += media.packetSize)
            descriptions.push_back({offset, 0, quint32(media.packetSize)});
        const QByteArray whole = rest.first(offset);
        rest.remove(0, offset);
        client.handlePacket(*this, quint32(descriptions.size()), whole, descriptions);
        isParsing = false;
        return true;
    }
    void finish() override {}
    void continueAt(qint64) override {}
    std::optional<AudioFileStreamSeek> seek(qint64) const override { return std::nullopt; }
    std::optional<AudioStreamBasicDescription> dataFormat() const override
    {
        return media.hasFormat ? std::optional(media.format) : std::nullopt;
    }
    std::vector<AudioStreamBasicDescription> formatList() const override { return media.formatList; }
    std::optional<quint32> packetSizeUpperBound() const override { return media.upperBound; }

    FakeMedia &media;
    AudioFileStreamClient &client;
    bool isReady = false;
    bool isParsing = false;
    QByteArray rest;
};

inline StreamerServices FakeMedia::services()
{
    return {.openAudioFileStream = [this](AudioFileStreamClient &client,
                                          AudioFileType hint) -> std::unique_ptr<AudioFileStream> {
                hints.push_back(hint);
                return opens-- > 0 ? std::make_unique<FakeAudioFileStream>(*this, client) : nullptr;
            },
            .newOutputQueue = [this](const AudioStreamBasicDescription &,
                                     OutputQueue::BufferCallback callback,
                                     const OutputQueueOptions &options) -> std::shared_ptr<OutputQueue> {
                queue = makesQueues ? std::make_shared<FakeOutputQueue>(*this, std::move(callback)) : nullptr;
                if (queue)
                    queue->mediaName = options.mediaName;
                return queue;
            },
            .reachability = network.monitors()};
}

} // namespace orvel::test
