#pragma once

#include "platform/foundation/NotificationCentre.h"
#include "platform/net/Reachability.h"

namespace orvel::test {

// A network that a test takes away; outlives its monitors.
class NetworkUnderTest
{
public:
    // Tells started monitors.
    void set(Reachability::Status newStatus)
    {
        status = newStatus;
        if (started > 0)
            NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
    }
    ReachabilityFactory monitors()
    {
        return [this] { return std::make_unique<Monitor>(*this); };
    }

    Reachability::Status status = Reachability::Status::WiFi;
    int started = 0; // monitors that watch it now

private:
    class Monitor final : public Reachability
    {
    public:
        explicit Monitor(NetworkUnderTest &network) : m_network(network) {}
        ~Monitor() override { stopNotifier(); }
        void startNotifier() override { m_network.started += !std::exchange(m_started, true); }
        void stopNotifier() override { m_network.started -= std::exchange(m_started, false); }
        Status currentReachabilityStatus() const override { return m_network.status; }

    private:
        NetworkUnderTest &m_network;
        bool m_started = false;
    };
};

} // namespace orvel::test
