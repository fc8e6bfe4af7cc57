#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace orvel {

// Reports how the internet is reached now, and posts a notification on the default centre when that changes.
// Main thread.
class Reachability
{
public:
    enum class Status { NotReachable = 0, WiFi = 1, Cellular = 2 };
    // Posted with no object after a change, only between startNotifier() and stopNotifier().
    static inline const QString changedNotification =
        QStringLiteral("NetworkReachabilityChangedNotification");

    virtual ~Reachability() = default;
    virtual void startNotifier() = 0;
    virtual void stopNotifier() = 0;
    virtual Status currentReachabilityStatus() const = 0;
    bool isReachable() const { return currentReachabilityStatus() != Status::NotReachable; }
};

using ReachabilityFactory = std::function<std::unique_ptr<Reachability>()>;

// Returns a monitor that asks the system (QNetworkInformation). Disconnected is not reachable; a connection
// that the system calls cellular is cellular, any other is Wi-Fi. Without a service that knows
// (NetworkManager) the network's own interfaces are asked. The monitor may be dropped inside its own
// notification.
std::unique_ptr<Reachability> reachabilityForInternetConnection();

// Returns a monitor that is always on Wi-Fi, for a station on this machine.
std::unique_ptr<Reachability> reachabilityForLocalStation();

} // namespace orvel
