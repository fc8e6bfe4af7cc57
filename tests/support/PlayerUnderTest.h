#pragma once

#include "audio/live/Streamer.h"
#include "support/NetworkUnderTest.h"
#include "support/TestLoop.h"

#include <QStringList>
#include <algorithm>

namespace orvel::test {

// A live player and what its delegate is told. Its services are the real ones unless others are handed in,
// but for the network.
class PlayerUnderTest : public RadioDelegate
{
public:
    explicit PlayerUnderTest(const QString &url, StreamerServices services = {})
    {
        services.reachability = network.monitors();
        streamer = Streamer::initWithURL(*Url::fromText(url), std::move(services));
        streamer->setDelegate(m_delegate);
    }
    ~PlayerUnderTest() override
    {
        letGo();
        joinOutputQueues();
        letEventsRun();
    }

    Streamer *operator->() const { return streamer.get(); }
    bool reaches(RadioState state, double seconds = 20)
    {
        return waitUntil([&] { return streamer->radioState() == state; }, seconds);
    }
    bool hasSounded() const { return std::ranges::count(states, RadioStatePlaying) > 0; }
    // Shuts the player down, drops it, and closes what connections it has left for later ones. False when
    // something keeps it.
    bool letGo()
    {
        const std::weak_ptr<Streamer> player = streamer;
        if (streamer)
            streamer->shutdown();
        streamer.reset();
        closeConnections();
        return waitUntil([&] { return player.expired(); });
    }

    NetworkUnderTest network;
    std::shared_ptr<Streamer> streamer;
    std::vector<RadioState> states;
    QStringList titles;
    QStringList names;

private:
    void radioStateChanged(Radio &radio) override { states.push_back(radio.radioState()); }
    void radioMetadataReady(Radio &radio) override { names << radio.radioName(); }
    void radioTitleChanged(Radio &radio) override { titles << radio.radioTitle(); }

    const std::shared_ptr<RadioDelegate> m_delegate{this, [](RadioDelegate *) {}};
};

} // namespace orvel::test
