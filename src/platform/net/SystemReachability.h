#pragma once

#include "platform/net/Reachability.h"

#include <QNetworkInformation>
#include <QObject>

namespace orvel {

// Compares the system's status with the last one seen whenever the system says that something has changed.
class SystemReachability final : public Reachability
{
public:
    // `status` asks the system.
    explicit SystemReachability(std::function<Status()> status);

    void startNotifier() override;
    void stopNotifier() override;
    Status currentReachabilityStatus() const override { return m_status(); }

    // Something has changed. May drop this object.
    void check();
    // Lives as long as this one: what the system's signals are tied to.
    QObject *context() { return &m_context; }

    static Status statusOf(QNetworkInformation::Reachability reachability,
                           QNetworkInformation::TransportMedium medium);

private:
    const std::function<Status()> m_status;
    bool m_started = false;
    Status m_last = Status::NotReachable;
    QObject m_context;
};

// Asks the kernel about the network's interfaces. Any that is up is Wi-Fi. A loss is posted at once, a return
// after a second.
std::unique_ptr<Reachability> reachabilityByInterfaces();

} // namespace orvel
