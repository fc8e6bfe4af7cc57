#pragma once

#include "audio/live/Streamer.h"

namespace orvel::test {

// Stands between a player and the parser of its sound and counts what comes out, and is the player's only
// word on the network. Outlives the player. Main thread.
class StreamMeter
{
public:
    StreamerServices services();
    // Tells the player.
    void setNetwork(Reachability::Status status);

    // Of sound, since the meter was made.
    qint64 bytes() const { return m_bytes; }
    qint64 packets() const { return m_packets; }
    // Called ahead of each piece of sound that is counted.
    std::function<void()> beforePackets = [] {};

private:
    struct Tap;

    std::vector<std::shared_ptr<Tap>> m_taps;
    qint64 m_bytes = 0;
    qint64 m_packets = 0;
    Reachability::Status m_network = Reachability::Status::WiFi;
};

} // namespace orvel::test
