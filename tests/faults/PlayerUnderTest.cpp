#include "faults/PlayerUnderTest.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/media/SoundOutput.h"
#include "platform/net/SystemReachability.h"
#include "support/TestLoop.h"

namespace orvel::test {

PlayerUnderTest::PlayerUnderTest(const QString &url)
{
    qputenv("ORVEL_AUDIO_DEVICE", "null");
    StreamerServices services;
    services.reachability = [this] {
        return std::make_unique<SystemReachability>([this] { return m_network; });
    };
    m_streamer = Streamer::initWithURL(*Url::fromText(url), std::move(services));
    m_streamer->setDelegate(m_delegate);
    m_streamer->setBufferInSeconds(1);
}

PlayerUnderTest::~PlayerUnderTest()
{
    letGo();
    joinOutputQueues();
}

void PlayerUnderTest::setNetwork(Reachability::Status status)
{
    m_network = status;
    NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
}

bool PlayerUnderTest::letGo()
{
    const std::weak_ptr<Streamer> player = m_streamer;
    if (m_streamer)
        m_streamer->shutdown();
    m_streamer.reset();
    closeConnections(); // those kept open for later requests
    return waitUntil([&] { return player.expired(); });
}

} // namespace orvel::test
