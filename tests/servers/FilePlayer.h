#pragma once

#include "audio/file/AudioStreamer.h"
#include "support/CapturedSound.h"
#include "support/TestLoop.h"

#include <atomic>

namespace orvel::test {

// A file's player whose sound is captured much faster than it would be heard. It does not go on before it is
// released, once its duration is known.
class FilePlayer
{
public:
    explicit FilePlayer(const QString &url)
    {
        AudioStreamerServices services{.newOutputQueue = [this](const AudioStreamBasicDescription &format,
                                                                const OutputQueue::BufferCallback &callback,
                                                                const OutputQueueOptions &options) {
            packetFrames = format.framesPerPacket;
            return newOutputQueue(
                format,
                [this, callback](OutputQueue &queue, OutputBuffer &buffer) {
                    if (streamer->duration() >= 1)
                        m_isHeld.wait(true);
                    callback(queue, buffer);
                },
                options);
        }};
        streamer = AudioStreamer::initWithURL(*Url::fromText(url), std::move(services));
    }
    ~FilePlayer()
    {
        release();
        streamer->stop();
        letEventsRun();
    }

    AudioStreamer *operator->() const { return streamer.get(); }
    // Begins, and stands there.
    bool begins()
    {
        streamer->start();
        return waitUntil([&] { return streamer->isPlaying() && streamer->duration() >= 1; });
    }
    void release()
    {
        m_isHeld = false;
        m_isHeld.notify_all();
    }
    bool ends(double seconds = 20)
    {
        release();
        return waitUntil([&] { return streamer->isIdle(); }, seconds);
    }
    // What came after the last seek.
    std::vector<float> sound() const { return m_sound.samples(); }

    std::atomic<quint32> packetFrames = 0;

private:
    const CapturedSound m_sound;
    std::atomic<bool> m_isHeld = true;
    std::shared_ptr<AudioStreamer> streamer;
};

} // namespace orvel::test
