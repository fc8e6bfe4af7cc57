#include "demo/Connection.h"

#include <cerrno>

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel::demo {

Connection::Connection(int socket) : m_socket(socket) {}

Connection::~Connection() { close(); }

bool Connection::waitFor(short events, int milliseconds) const
{
    pollfd poll{m_socket, events, 0};
    int result = 0;
    do {
        result = ::poll(&poll, 1, milliseconds);
    } while (result < 0 && errno == EINTR);
    return result > 0;
}

QByteArray Connection::receive()
{
    constexpr int patience = 5000;
    char buffer[4096];
    if (!waitFor(POLLIN, patience))
        return {};
    const ssize_t count = ::recv(m_socket, buffer, sizeof buffer, 0);
    return count > 0 ? QByteArray(buffer, count) : QByteArray();
}

bool Connection::send(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::send(m_socket, bytes.data(), std::size_t(bytes.size()), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes = bytes.sliced(count);
    }
    return true;
}

bool Connection::stay(std::chrono::milliseconds time) { return !waitFor(POLLRDHUP, int(time.count())); }

void Connection::stayForGood() { waitFor(POLLRDHUP, -1); }

void Connection::reset()
{
    using namespace std::chrono_literals;
    int unsent = 0;
    for (int i = 0; i < 200 && ::ioctl(m_socket, SIOCOUTQ, &unsent) == 0 && unsent > 0; ++i) {
        if (!stay(5ms))
            break;
    }
    const linger abrupt{1, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &abrupt, sizeof abrupt);
}

void Connection::close()
{
    const std::scoped_lock lock(m_closing);
    if (m_socket >= 0)
        ::close(m_socket);
    m_socket = -1;
}

void Connection::abort()
{
    const std::scoped_lock lock(m_closing);
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR);
}

} // namespace orvel::demo
