#pragma once

#include "platform/net/UrlConnection.h"

#include <cstddef>
#include <memory>

namespace orvel {

// Lets a connection bring a stream as fast as it is played: the more packets wait, the longer it rests
// between reads, and beyond a bound it is suspended. Main thread.
class TransferPacing
{
public:
    void begin(std::shared_ptr<UrlConnection> connection);
    void end() { begin(nullptr); }

    // Bytes of packets that wait to be played, and how many start the sound. Suspends the connection beyond
    // the bound, resumes it below the low mark.
    void packetsWaiting(std::size_t bytes, std::size_t startThreshold);
    // The connection may rest between reads from now on: sound is played meanwhile.
    void soundStarted() { m_mayRest = true; }
    // The connection reads whatever comes, at once.
    void soundIsWanted();

private:
    std::shared_ptr<UrlConnection> m_connection;
    bool m_isSuspended = false;
    bool m_mayRest = false;
};

} // namespace orvel
