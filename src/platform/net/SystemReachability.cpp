#include "platform/net/SystemReachability.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/net/NetworkInterfaces.h"

#include <QPointer>
#include <QTimer>
#include <chrono>

namespace orvel {

namespace {

// The kernel gives up looking for a neighbour up to a second after the cable is back, and a connection that
// is made meanwhile fails with it.
constexpr std::chrono::seconds settlingTime{1};

} // namespace

SystemReachability::SystemReachability(std::function<Status()> status) : m_status(std::move(status)) {}

void SystemReachability::startNotifier()
{
    m_started = true;
    m_last = m_status();
}

void SystemReachability::stopNotifier() { m_started = false; }

void SystemReachability::check()
{
    const Status now = m_status();
    if (!m_started || now == m_last)
        return;
    m_last = now;
    NotificationCentre::defaultCentre().postNotification(changedNotification);
}

Reachability::Status SystemReachability::statusOf(QNetworkInformation::Reachability reachability,
                                                  QNetworkInformation::TransportMedium medium)
{
    if (reachability == QNetworkInformation::Reachability::Disconnected)
        return Status::NotReachable;
    return medium == QNetworkInformation::TransportMedium::Cellular ? Status::Cellular : Status::WiFi;
}

std::unique_ptr<Reachability> reachabilityForInternetConnection()
{
    QNetworkInformation::loadDefaultBackend();
    const QPointer<QNetworkInformation> system = QNetworkInformation::instance(); // gone with the application
    if (!system)
        return reachabilityByInterfaces();
    auto monitor = std::make_unique<SystemReachability>([system] {
        return system ? SystemReachability::statusOf(system->reachability(), system->transportMedium())
                      : Reachability::Status::NotReachable;
    });
    const auto check = [it = monitor.get()] { it->check(); };
    QObject::connect(system.get(), &QNetworkInformation::reachabilityChanged, monitor->context(), check);
    QObject::connect(system.get(), &QNetworkInformation::transportMediumChanged, monitor->context(), check);
    return monitor;
}

std::unique_ptr<Reachability> reachabilityByInterfaces()
{
    auto monitor = std::make_unique<SystemReachability>([] {
        return hasRouteToInternet() ? Reachability::Status::WiFi : Reachability::Status::NotReachable;
    });
    watchNetworkInterfaces(*monitor->context(), [it = monitor.get()] {
        const auto check = [it] { it->check(); };
        if (it->isReachable())
            QTimer::singleShot(settlingTime, it->context(), check);
        else
            check();
    });
    return monitor;
}

std::unique_ptr<Reachability> reachabilityForLocalStation()
{
    return std::make_unique<SystemReachability>([] { return Reachability::Status::WiFi; });
}

} // namespace orvel
