#include "platform/foundation/NotificationCentre.h"
#include "platform/net/SystemReachability.h"

#include <gtest/gtest.h>

using namespace orvel;
using Status = Reachability::Status;
using Reach = QNetworkInformation::Reachability;
using Medium = QNetworkInformation::TransportMedium;

namespace {

TEST(ReachabilityTest, ReadsTheSystemsWords)
{
    EXPECT_EQ(SystemReachability::statusOf(Reach::Disconnected, Medium::Cellular), Status::NotReachable);
    EXPECT_EQ(SystemReachability::statusOf(Reach::Online, Medium::Cellular), Status::Cellular);
    EXPECT_EQ(SystemReachability::statusOf(Reach::Unknown, Medium::Unknown), Status::WiFi);
    EXPECT_EQ(SystemReachability::statusOf(Reach::Site, Medium::Ethernet), Status::WiFi);
    EXPECT_TRUE(reachabilityForLocalStation()->isReachable());
}

TEST(ReachabilityTest, PostsChangesWhileStartedAndMayBeDroppedMeanwhile)
{
    Status status = Status::WiFi;
    auto monitor = std::make_unique<SystemReachability>([&] { return status; });
    int posted = 0;
    const auto changeTo = [&](Status next) {
        status = next;
        monitor->check();
        return posted;
    };
    NotificationCentre &centre = NotificationCentre::defaultCentre();
    centre.addObserver(&posted, Reachability::changedNotification, [&](const Notification &) {
        ++posted;
        if (status == Status::NotReachable)
            monitor.reset();
    });
    EXPECT_EQ(changeTo(Status::Cellular), 0);
    monitor->startNotifier();
    EXPECT_EQ(changeTo(Status::Cellular), 0);
    EXPECT_EQ(changeTo(Status::WiFi), 1);
    EXPECT_EQ(changeTo(Status::WiFi), 1);
    monitor->stopNotifier();
    EXPECT_EQ(changeTo(Status::Cellular), 1);
    monitor->startNotifier();
    EXPECT_EQ(changeTo(Status::NotReachable), 2);
    EXPECT_FALSE(monitor);
    centre.removeObserver(&posted);
}

} // namespace
