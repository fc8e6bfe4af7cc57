#include "demo/StreamServer.h"

#include <algorithm>
#include <cerrno>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel::demo {

namespace {

constexpr std::size_t maxVisits = 100;

} // namespace

std::unique_ptr<StreamServer> StreamServer::listen(quint16 port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    socklen_t size = sizeof address;
    if (::bind(socket, generic, size) != 0 || ::listen(socket, SOMAXCONN) != 0 ||
        ::getsockname(socket, generic, &size) != 0) {
        ::close(socket);
        return nullptr;
    }
    return std::unique_ptr<StreamServer>(new StreamServer(socket, ntohs(address.sin_port)));
}

StreamServer::~StreamServer()
{
    m_stop.request_stop();
    ::shutdown(m_socket, SHUT_RDWR);
    if (m_acceptor.joinable())
        m_acceptor.join();
    ::close(m_socket);
    for (Visit &visit : m_visits)
        visit.connection.abort();
    m_visits.clear();
}

void StreamServer::start(const StationContent &content, const StreamSettings &settings)
{
    m_settings = settings;
    m_siteUrl = content.siteUrl();
    for (const Programme &programme : content.programmes())
        m_channels.emplace_back(programme);
    m_acceptor = std::jthread([this] { acceptAll(); });
}

void StreamServer::acceptAll()
{
    while (!m_stop.stop_requested()) {
        const int socket = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC);
        std::erase_if(m_visits, [](const Visit &visit) { return visit.over.load(); });
        if (socket >= 0)
            welcome(socket);
        else if (!m_stop.stop_requested() && (errno == EMFILE || errno == ENFILE))
            std::this_thread::sleep_for(std::chrono::milliseconds(20)); // until a listener leaves
    }
}

void StreamServer::welcome(int socket)
{
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (m_visits.size() >= maxVisits) {
        ::close(socket);
        return;
    }
    Visit &visit = m_visits.emplace_back(socket);
    visit.thread = std::jthread([this, &visit] {
        StreamSession session(visit.connection, m_settings, m_siteUrl);
        session.serve([this](const QString &stream) { return channel(stream); }, m_stop.get_token());
        visit.connection.close();
        visit.over = true;
    });
}

Channel *StreamServer::channel(const QString &stream)
{
    const auto found = std::ranges::find_if(
        m_channels, [&](const Channel &channel) { return channel.programme().stream == stream; });
    return found == m_channels.end() ? nullptr : &*found;
}

} // namespace orvel::demo
