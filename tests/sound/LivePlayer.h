#pragma once

#include "audio/live/Streamer.h"
#include "support/CapturedSound.h"
#include "support/TestLoop.h"

#include <QStringList>
#include <atomic>

namespace orvel::test {

// A live player whose sound is captured much faster than it would be heard. So that this never runs ahead of
// the network unless a test wants it to, no buffer is filled again while the hold is on.
class LivePlayer : public RadioDelegate
{
public:
    explicit LivePlayer(const QString &url)
    {
        StreamerServices services{.reachability = reachabilityForLocalStation};
        services.newOutputQueue = [this](const AudioStreamBasicDescription &format,
                                         OutputQueue::BufferCallback callback) {
            return newOutputQueue(
                format, [this, callback = std::move(callback)](OutputQueue &queue, OutputBuffer &buffer) {
                    m_isHeld.wait(true);
                    callback(queue, buffer);
                });
        };
        streamer = Streamer::initWithURL(*Url::fromText(url), services);
        streamer->setDelegate(m_delegate);
        streamer->setBufferInSeconds(1);
        streamer->setVolume(1);
    }
    ~LivePlayer() override
    {
        letGo();
        streamer->shutdown();
        joinOutputQueues();
        letEventsRun();
    }

    bool reaches(RadioState state)
    {
        return waitUntil([&] { return streamer->radioState() == state; });
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
        letGo();
        return reaches(RadioStateStopped);
    }
    void hold() { m_isHeld = true; }
    void letGo()
    {
        m_isHeld = false;
        m_isHeld.notify_all();
    }
    // Ends what is still playing.
    std::vector<float> sound()
    {
        letGo(); // a held queue does not end
        return m_sound.samples();
    }

    std::shared_ptr<Streamer> streamer;
    QStringList titles;

private:
    void radioTitleChanged(Radio &radio) override { titles << radio.radioTitle(); }

    const CapturedSound m_sound;
    const std::shared_ptr<RadioDelegate> m_delegate{this, [](RadioDelegate *) {}};
    std::atomic<bool> m_isHeld = true;
};

} // namespace orvel::test
