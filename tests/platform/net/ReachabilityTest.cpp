#include "platform/foundation/NotificationCentre.h"
#include "platform/net/OwnNetwork.h"
#include "platform/net/SystemReachability.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;
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

TEST(ReachabilityTest, NoticesAnUnpluggedCable)
{
    const OwnNetwork network;
    if (!network.isUsed() || !network.plugInCable())
        GTEST_SKIP() << "a network of its own needs root and iproute2";
    const auto monitor = reachabilityByInterfaces();
    ASSERT_TRUE(waitUntil([&] { return monitor->isReachable(); }));
    monitor->startNotifier();
    int posted = 0;
    NotificationCentre &centre = NotificationCentre::defaultCentre();
    centre.addObserver(&posted, Reachability::changedNotification, [&](const Notification &) { ++posted; });
    const struct
    {
        const char *command;
        Status status;
    } steps[] = {{"ip link set wall down", Status::NotReachable},
                 {"ip link set wall up", Status::WiFi},
                 {"ip route del default", Status::NotReachable},
                 {"ip route add default via 10.9.8.1", Status::WiFi},
                 {"ip addr flush dev cable scope global", Status::NotReachable}};
    int changes = 0;
    for (const auto &[command, status] : steps) {
        ASSERT_TRUE(OwnNetwork::run(command));
        ++changes;
        EXPECT_TRUE(waitUntil([&] { return posted == changes; })) << command;
        EXPECT_EQ(monitor->currentReachabilityStatus(), status) << command;
    }
    centre.removeObserver(&posted);
}

} // namespace
