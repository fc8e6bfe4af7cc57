#pragma once

#include "audio/file/FileOutput.h"
#include "audio/file/FileReadStream.h"
#include "audio/file/ThreadEvents.h"

namespace orvel {

// What a streamer's thread does: reads the file, finds its packets for the output, and jumps. Belongs to that
// thread, except for wake(). It takes the lock of the streamer's states for what the other parts share.
class FileReading final : private AudioFileStreamClient
{
public:
    FileReading(const Url &url, AudioFileStreamOpener openAudioFileStream, StreamerStates &states,
                FileTiming &timing, FileOutput &output);
    ~FileReading() override { closeStream(); }
    FileReading(const FileReading &) = delete;
    FileReading &operator=(const FileReading &) = delete;

    // Begins to read. Returns false when the streamer is over, or when the URL's scheme is neither http nor
    // https.
    bool openReadStream();
    // Reads until the streamer ends.
    void run();
    // Any thread: there is something to do.
    void wake() { m_events.wake(); }

private:
    void turn();
    void closeStream();
    void handleBytesAvailable();
    bool openParser();
    void handleEndEncountered();
    void internalSeekToTime();

    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override;
    bool takeProperty(const AudioFileStream &stream, AudioFileStreamProperty property);
    void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override;

    const Url m_url;
    const AudioFileStreamOpener m_openAudioFileStream;
    StreamerStates &m_states;
    FileTiming &m_timing;
    FileOutput &m_output;

    ThreadEvents m_events;
    std::shared_ptr<FileReadStream> m_stream;
    bool m_isEndHandled = false; // of that stream
    std::unique_ptr<AudioFileStream> m_audioFileStream;
};

} // namespace orvel
