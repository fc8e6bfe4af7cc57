#pragma once

#include <QObject>
#include <functional>

namespace orvel {

// Returns whether an interface other than the loopback is up with a carrier and an address that is not
// link-local.
bool hasNetworkInterface();

// Calls `changed`, as long as `context` lives, when the kernel reports (rtnetlink) that an interface or an
// address has come, gone or changed. Main thread.
void watchNetworkInterfaces(const QObject &context, std::function<void()> changed);

} // namespace orvel
