#include "faults/PlayerUnderTest.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/media/SoundOutput.h"
#include "platform/net/SystemReachability.h"

namespace orvel::test {

struct PlayerUnderTest::Listener : RadioDelegate
{
    bool hasSounded = false;
    QStringList titles;
    void radioStateChanged(Radio &radio) override { hasSounded |= radio.radioState() == RadioStatePlaying; }
    void radioTitleChanged(Radio &radio) override
    {
        if (titles.isEmpty() || titles.last() != radio.radioTitle())
            titles << radio.radioTitle();
    }
};

PlayerUnderTest::PlayerUnderTest(const QString &url) : m_listener(std::make_shared<Listener>())
{
    qputenv("ORVEL_AUDIO_DEVICE", "null");
    StreamerServices services;
    services.reachability = [network = m_network] {
        return std::make_unique<SystemReachability>([network] { return *network; });
    };
    m_streamer = Streamer::initWithURL(*Url::fromText(url), std::move(services));
    m_streamer->setDelegate(m_listener);
    m_streamer->setBufferInSeconds(1);
}

PlayerUnderTest::~PlayerUnderTest()
{
    letGo();
    joinOutputQueues();
}

void PlayerUnderTest::setNetwork(Reachability::Status status)
{
    *m_network = status;
    NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
}

bool PlayerUnderTest::reaches(RadioState state, bool soundedBefore)
{
    return waitUntil(
        [&] { return m_streamer->radioState() == state && (!soundedBefore || m_listener->hasSounded); });
}

bool PlayerUnderTest::hasSounded() const { return m_listener->hasSounded; }

const QStringList &PlayerUnderTest::titles() const { return m_listener->titles; }

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
