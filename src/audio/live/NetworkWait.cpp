#include "audio/live/NetworkWait.h"

#include <utility>

namespace orvel {

namespace {

constexpr double reconnectionSeconds = 60;

} // namespace

NetworkWait::NetworkWait(ReachabilityFactory reachability, BackgroundStay &background, Handlers handlers)
    : m_newReachability(std::move(reachability)), m_background(background), m_handlers(std::move(handlers))
{
}

bool NetworkWait::begin()
{
    stopReconnectTimer();
    startReachability();
    if (isReachable())
        m_connectionType = m_reachability->currentReachabilityStatus();
    return isReachable();
}

void NetworkWait::end()
{
    stopBufferTimer();
    stopReconnectTimer();
    // Its own notification may be what ends it.
    if (const std::unique_ptr<Reachability> monitor = std::exchange(m_reachability, nullptr))
        monitor->stopNotifier();
}

void NetworkWait::startBufferTimerWithTimeout(double seconds)
{
    stopBufferTimer();
    m_background.begin();
    startTimer(m_bufferTimer, seconds, m_handlers.onBufferTimerFired);
}

void NetworkWait::startReconnectTimerWithTimeout(double seconds)
{
    stopReconnectTimer();
    m_background.begin();
    startTimer(m_reconnectTimer, seconds, m_handlers.onReconnectTimerFired);
}

void NetworkWait::startTimer(RunLoop::Token &timer, double seconds, const std::function<void()> &onFired)
{
    timer = RunLoop::main().after(
        seconds,
        [&timer, &onFired] {
            timer = 0;
            onFired();
        },
        RunLoop::Lane::Service);
}

void NetworkWait::stopBufferTimer() { RunLoop::main().cancel(std::exchange(m_bufferTimer, 0)); }

void NetworkWait::stopReconnectTimer() { RunLoop::main().cancel(std::exchange(m_reconnectTimer, 0)); }

bool NetworkWait::waitForReconnection()
{
    startReconnectTimerWithTimeout(reconnectionSeconds);
    startReachability();
    return isReachable();
}

bool NetworkWait::isReachable() const { return m_reachability && m_reachability->isReachable(); }

bool NetworkWait::hasMovedToCellular() const
{
    return m_connectionType == Reachability::Status::WiFi && m_reachability &&
           m_reachability->currentReachabilityStatus() == Reachability::Status::Cellular;
}

void NetworkWait::startReachability()
{
    if (!m_reachability)
        m_reachability = m_newReachability();
    m_reachability->startNotifier();
}

} // namespace orvel
