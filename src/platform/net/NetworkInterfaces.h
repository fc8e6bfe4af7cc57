#pragma once

#include <QObject>
#include <functional>

namespace orvel {

// Returns whether a default route leads over an interface that is up with a carrier and an address that is
// not link-local.
bool hasRouteToInternet();

// Calls `changed`, as long as `context` lives, when the kernel reports (rtnetlink) that an interface or
// a route has come, gone or changed. Main thread.
void watchNetworkInterfaces(const QObject &context, std::function<void()> changed);

} // namespace orvel
