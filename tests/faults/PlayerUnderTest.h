#pragma once

#include "audio/live/Streamer.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/net/SystemReachability.h"
#include "support/TestLoop.h"

#include <QStringList>

namespace orvel::test {

// The whole player on the null sound device, with a network that the test can take away.
class PlayerUnderTest : public RadioDelegate
{
public:
    explicit PlayerUnderTest(const QString &url)
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
    ~PlayerUnderTest() override
    {
        letGo();
        joinOutputQueues();
    }

    Streamer *operator->() const { return m_streamer.get(); }

    void loseNetwork()
    {
        m_network = Reachability::Status::NotReachable;
        NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
    }
    bool hasSounded() const { return m_hasSounded; }
    const QStringList &titles() const { return m_titles; }
    // Shuts it down, drops it, and closes what connections it has left for later ones. False when something
    // keeps it.
    bool letGo()
    {
        const std::weak_ptr<Streamer> player = m_streamer;
        if (m_streamer)
            m_streamer->shutdown();
        m_streamer.reset();
        closeConnections();
        return waitUntil([&] { return player.expired(); });
    }

private:
    void radioStateChanged(Radio &radio) override { m_hasSounded |= radio.radioState() == RadioStatePlaying; }
    void radioTitleChanged(Radio &radio) override
    {
        m_titles << radio.radioTitle();
        m_titles.removeDuplicates();
    }

    Reachability::Status m_network = Reachability::Status::WiFi;
    const std::shared_ptr<RadioDelegate> m_delegate{this, [](RadioDelegate *) {}};
    std::shared_ptr<Streamer> m_streamer;
    bool m_hasSounded = false;
    QStringList m_titles;
};

} // namespace orvel::test
