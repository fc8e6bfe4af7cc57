#pragma once

#include "audio/live/OutputBuffers.h"
#include "audio/live/RadioState.h"
#include "platform/media/parse/AudioFileStream.h"

#include <optional>

namespace orvel {

// What a player learns of its sound. Main thread.
class StreamOutputClient
{
public:
    virtual ~StreamOutputClient() = default;
    // A format is known and its output queue is made. The parser is fed best in pieces of this many bytes.
    virtual void outputPrepared(quint32 bufferSize) = 0;
    // Packets have arrived, or few are left. `startThreshold` is how many bytes start the sound.
    virtual void packetsWaiting(std::size_t bytes, std::size_t startThreshold) = 0;
    virtual void outputStarted() = 0;
    // All buffers have been played and no packet waits, but the stream goes on.
    virtual void outputRanDry() = 0;
    // The last buffer of a stream that has ended has been played.
    virtual void outputHasEnded() = 0;
    virtual void outputFailed(RadioError error) = 0;
};

// The output side of a live player: finds the packets in its sound, lets them wait, fills the output queue's
// buffers with them and starts it once there are enough. Main thread, except for handlePlayCallback. Held by
// a shared_ptr; its owner calls dismissQueue() before it goes.
class StreamOutput final : public AudioFileStreamClient, public std::enable_shared_from_this<StreamOutput>
{
public:
    StreamOutput(StreamOutputClient &client, AudioFileStreamOpener openAudioFileStream,
                 OutputQueueMaker newOutputQueue);

    // Replaces the parser. False when none can be opened.
    bool openParser(AudioFileType hint);
    // Feeds the parser; without one the sound is dropped. False when the player has been stopped by it.
    bool parse(QByteArrayView audio);
    // No more sound comes. Returns false when none is left to be heard.
    bool streamHasEnded() { return m_buffers.streamHasEnded(); }
    // Ends the sound and closes the parser. Nothing is told to the client after it.
    void dismissQueue();

    bool isStarted() const { return m_queueStarted; }
    bool isBuffering() { return m_buffers.isBuffering(); }
    void setVolume(float volume);
    // How the sound server's mixer names the sound.
    void setMediaName(const QString &name);
    // How many buffers' bytes of packets start the sound.
    void setBufferCount(quint64 count) { m_bufferCount = count; }

private:
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override;
    void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override;
    // On the output queue's thread.
    void handlePlayCallback(OutputBuffer &buffer, quint64 outputQueueNumber);

    void readyToProducePackets(AudioFileStream &stream);
    RadioError makeOutputQueue(const AudioStreamBasicDescription &format, const AudioFileStream &stream);
    void primeQueueBuffers();
    void startQueue();
    void afterFilling(const OutputBuffers::Outcome &outcome);
    bool disposeOutputQueue();
    std::size_t startThreshold() const { return std::size_t(m_bufferSize * m_bufferCount); }

    StreamOutputClient &m_client;
    const AudioFileStreamOpener m_openAudioFileStream;
    const OutputQueueMaker m_newOutputQueue;

    OutputBuffers m_buffers; // any thread; what follows is the main thread's
    std::shared_ptr<OutputQueue> m_outputQueue;
    bool m_queueStarted = false;
    quint32 m_bufferSize = 0; // bytes of an output buffer
    quint64 m_bufferCount = 6;
    float m_volume = 0.5F;
    QString m_mediaName;

    std::unique_ptr<AudioFileStream> m_audioFileStream;
    std::optional<AudioStreamBasicDescription> m_hqASBD; // this parser's high-quality format
    bool m_isParsing = false;
    bool m_closeParser = false; // asked for while it parses
};

} // namespace orvel
