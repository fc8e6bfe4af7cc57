#pragma once

#include "audio/live/Streamer.h"
#include "support/TestLoop.h"

#include <QStringList>

namespace orvel::test {

// The whole player on the null sound device, with a network that the test can take away.
class PlayerUnderTest
{
public:
    explicit PlayerUnderTest(const QString &url);
    ~PlayerUnderTest();
    PlayerUnderTest(const PlayerUnderTest &) = delete;
    PlayerUnderTest &operator=(const PlayerUnderTest &) = delete;

    Streamer &operator*() const { return *m_streamer; }
    Streamer *operator->() const { return m_streamer.get(); }

    void setNetwork(Reachability::Status status);
    // Runs the event loop until the player is in the state; with `soundedBefore` only after it has played.
    bool reaches(RadioState state, bool soundedBefore = false);
    bool hasSounded() const;
    const QStringList &titles() const;
    // Shuts it down, drops it, and closes what connections it has left for later ones. False when something
    // keeps it.
    bool letGo();

private:
    struct Listener;
    const std::shared_ptr<Reachability::Status> m_network =
        std::make_shared<Reachability::Status>(Reachability::Status::WiFi);
    const std::shared_ptr<Listener> m_listener;
    std::shared_ptr<Streamer> m_streamer;
};

} // namespace orvel::test
