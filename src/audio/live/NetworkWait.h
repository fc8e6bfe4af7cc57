#pragma once

#include "audio/live/BackgroundStay.h"
#include "platform/foundation/RunLoop.h"
#include "platform/net/Reachability.h"

#include <functional>
#include <memory>

namespace orvel {

// How long a live player waits: for more sound after an underrun, and for a network that was lost. Watches
// how the network is reached meanwhile. Main thread.
class NetworkWait
{
public:
    struct Handlers
    {
        std::function<void()> onBufferTimerFired;    // no sound in time
        std::function<void()> onReconnectTimerFired; // no network in time
    };

    NetworkWait(ReachabilityFactory reachability, BackgroundStay &background, Handlers handlers);
    ~NetworkWait() { end(); }
    NetworkWait(const NetworkWait &) = delete;
    NetworkWait &operator=(const NetworkWait &) = delete;

    // A connection begins: no wait is under way, the network is watched, and how it is reached is noted.
    // Returns false when it is not reachable.
    bool begin();
    // Ends every wait; the network is not watched any more.
    void end();

    void startBufferTimerWithTimeout(double seconds);
    void stopBufferTimer();
    bool isBufferTimerRunning() const { return m_bufferTimer != 0; }
    // Waits for the network to come back. Returns true when it is there already.
    bool waitForReconnection();
    bool isWaitingForReconnection() const { return m_reconnectTimer != 0; }

    bool isWatching() const { return m_reachability != nullptr; }
    // False when the network is not watched.
    bool isReachable() const;
    // The connection began over Wi-Fi, and the network is cellular now.
    bool hasMovedToCellular() const;

private:
    void startReachability();
    void startReconnectTimerWithTimeout(double seconds);
    void stopReconnectTimer();
    // `timer` is 0 again when `onFired` is called. Both belong to this object, whose end stops the timer.
    static void startTimer(RunLoop::Token &timer, double seconds, const std::function<void()> &onFired);

    const ReachabilityFactory m_newReachability;
    BackgroundStay &m_background;
    const Handlers m_handlers;
    RunLoop::Token m_bufferTimer = 0;
    RunLoop::Token m_reconnectTimer = 0;
    std::unique_ptr<Reachability> m_reachability; // only while playing or waiting
    // As seen when the last connection began.
    Reachability::Status m_connectionType = Reachability::Status::NotReachable;
};

} // namespace orvel
