#include "faults/NetworkNamespace.h"

#include <cstring>
#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel::test {

namespace {

// Asks or tells the loopback link's flags.
bool handleFlags(unsigned long request, short &flags)
{
    ifreq link{};
    std::strcpy(link.ifr_name, "lo");
    link.ifr_flags = flags;
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool done = ::ioctl(socket, request, &link) == 0;
    ::close(socket);
    flags = link.ifr_flags;
    return done;
}

} // namespace

NetworkNamespace::NetworkNamespace() : m_before(::open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC))
{
    m_entered = m_before >= 0 && ::unshare(CLONE_NEWNET) == 0 && setLink(true);
}

NetworkNamespace::~NetworkNamespace()
{
    if (m_before < 0)
        return;
    ::setns(m_before, CLONE_NEWNET);
    ::close(m_before);
}

bool NetworkNamespace::setLink(bool up)
{
    short flags = 0;
    if (!handleFlags(SIOCGIFFLAGS, flags))
        return false;
    flags = up ? short(flags | IFF_UP) : short(flags & ~IFF_UP);
    return handleFlags(SIOCSIFFLAGS, flags);
}

bool NetworkNamespace::linkIsUp() const
{
    short flags = 0;
    return handleFlags(SIOCGIFFLAGS, flags) && (flags & IFF_UP);
}

} // namespace orvel::test
