#pragma once

#include "support/CapturedSound.h"
#include "support/PlayerUnderTest.h"

#include <atomic>

namespace orvel::test {

// A live player whose sound is captured much faster than it would be heard. So that this never runs ahead of
// the network unless a test wants it to, no buffer is filled again while the hold is on.
class LivePlayer : public PlayerUnderTest
{
public:
    explicit LivePlayer(const QString &url)
        : PlayerUnderTest(url, {.newOutputQueue = [this](const AudioStreamBasicDescription &format,
                                                         const OutputQueue::BufferCallback &callback,
                                                         const OutputQueueOptions &options) {
                              return newOutputQueue(
                                  format,
                                  [this, callback](OutputQueue &queue, OutputBuffer &buffer) {
                                      m_isHeld.wait(true);
                                      callback(queue, buffer);
                                  },
                                  options);
                          }})
    {
        streamer->setBufferInSeconds(1);
        streamer->setVolume(1);
    }
    ~LivePlayer() override
    {
        release();
        letGo();
        joinOutputQueues();
    }

    // Plays from the start to the stream's end, all of which has to be there (`hasArrived`) before the sound
    // goes beyond the first buffers.
    bool playsToTheEnd(const std::function<bool()> &hasArrived)
    {
        hold();
        streamer->play();
        if (!reaches(RadioStatePlaying) || !waitUntil(hasArrived))
            return false;
        letEventsRun();
        release();
        return reaches(RadioStateStopped);
    }
    void hold() { m_isHeld = true; }
    void release()
    {
        m_isHeld = false;
        m_isHeld.notify_all();
    }
    // Ends what is still playing.
    std::vector<float> sound()
    {
        release(); // a held queue does not end
        return m_sound.samples();
    }

private:
    const CapturedSound m_sound;
    std::atomic<bool> m_isHeld = true;
};

} // namespace orvel::test
