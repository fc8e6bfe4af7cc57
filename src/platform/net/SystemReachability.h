#pragma once

#include "platform/net/Reachability.h"

#include <QNetworkInformation>
#include <QObject>

namespace orvel {

// Compares the system's status with the last one seen whenever the system reports a change.
class SystemReachability final : public Reachability
{
public:
    // `status` asks the system.
    explicit SystemReachability(std::function<Status()> status);

    void startNotifier() override;
    void stopNotifier() override;
    Status currentReachabilityStatus() const override { return m_status(); }

    // To be called when something has changed. May drop this object.
    void check();
    // What the system's signals are tied to. Lives as long as this object.
    QObject *context() { return &m_context; }

    static Status statusOf(QNetworkInformation::Reachability reachability,
                           QNetworkInformation::TransportMedium medium);

private:
    const std::function<Status()> m_status;
    bool m_started = false;
    Status m_last = Status::NotReachable;
    QObject m_context;
};

// Returns a monitor that asks the kernel about the network's interfaces, each of which counts as Wi-Fi. A
// loss is posted at once, a return after a second.
std::unique_ptr<Reachability> reachabilityByInterfaces();

} // namespace orvel
