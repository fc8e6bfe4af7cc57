#include "platform/foundation/NotificationCentre.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(NotificationCentreTest, ObserversComeAndGoWhileANotificationIsPosted)
{
    NotificationCentre centre;
    QStringList heard;
    const int first = 0, second = 0, late = 0;
    centre.addObserver(&first, "n", [&](const Notification &n) {
        heard << "first " + n.object.toString();
        centre.removeObserver(&first);
        centre.removeObserver(&second);
        centre.addObserver(&late, "n", [&](const Notification &) { heard << "late"; });
    });
    centre.addObserver(&second, "n", [&](const Notification &) { heard << "second"; });
    centre.addObserver(&second, "other", [&](const Notification &) { heard << "other"; });
    centre.postNotification("n", "a");
    EXPECT_EQ(heard, QStringList({"first a"}));
    centre.postNotification("n");
    centre.postNotification("other");
    EXPECT_EQ(heard, QStringList({"first a", "late"}));
}
