#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

namespace orvel::test {

// A network for the calling thread alone, empty until a cable is plugged in. Root may make one.
class OwnNetwork
{
public:
    OwnNetwork() : m_isUsed(::unshare(CLONE_NEWNET) == 0) {}
    ~OwnNetwork()
    {
        if (m_isUsed)
            ::setns(m_before, CLONE_NEWNET);
        ::close(m_before);
    }
    OwnNetwork(const OwnNetwork &) = delete;
    OwnNetwork &operator=(const OwnNetwork &) = delete;

    bool isUsed() const { return m_isUsed; }
    // One with an address, a link-local one and the default route, all of IPv4: IPv6 would report more than
    // the cable, about both of its ends. Its other end is called "wall". A bridge of this machine's own, up
    // all the time, leads nowhere.
    bool plugInCable() const
    {
        return run("echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6 && "
                   "ip link add cable type veth peer name wall && "
                   "ip addr add 10.9.8.7/24 dev cable && ip addr add 169.254.9.8/16 scope link dev cable && "
                   "ip link add bridge type veth peer name guest && ip addr add 10.1.1.1/24 dev bridge && "
                   "ip link set bridge up && ip link set guest up && "
                   "ip link set wall up && ip link set cable up && ip route add default via 10.9.8.1");
    }
    static bool run(const char *command) { return std::system(command) == 0; }

private:
    const int m_before = ::open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC);
    const bool m_isUsed;
};

} // namespace orvel::test
