#include "LivePlayer.h"

#include "support/TestLoop.h"

namespace orvel::test {

LivePlayer::LivePlayer(const QString &url)
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

LivePlayer::~LivePlayer()
{
    letGo();
    streamer->shutdown();
    joinOutputQueues();
    letEventsRun();
}

bool LivePlayer::reaches(RadioState state)
{
    return waitUntil([&] { return streamer->radioState() == state; });
}

bool LivePlayer::playsToTheEnd(const std::function<bool()> &hasArrived)
{
    hold();
    streamer->play();
    if (!reaches(RadioStatePlaying) || !waitUntil(hasArrived))
        return false;
    letEventsRun();
    letGo();
    return reaches(RadioStateStopped);
}

std::vector<float> LivePlayer::sound()
{
    letGo(); // a held queue does not end
    return m_sound.samples();
}

void LivePlayer::letGo()
{
    m_isHeld = false;
    m_isHeld.notify_all();
}

} // namespace orvel::test
