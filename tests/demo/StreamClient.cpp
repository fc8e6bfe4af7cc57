#include "StreamClient.h"

#include <QUrl>

#include <cerrno>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel::test {

StreamClient::StreamClient(const QString &address, const QByteArray &headers)
    : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const QUrl url(address);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(quint16(url.port()));
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::connect(m_socket, reinterpret_cast<sockaddr *>(&to), sizeof to);
    const QByteArray target = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    const QByteArray request = "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + headers + "\r\n";
    ::send(m_socket, request.constData(), std::size_t(request.size()), MSG_NOSIGNAL);
}

StreamClient::~StreamClient() { ::close(m_socket); }

void StreamClient::readBody(qsizetype bytes, int patience)
{
    char buffer[16384];
    while (m_end == End::Open && (head().isEmpty() || body().size() < bytes)) {
        pollfd poll{m_socket, POLLIN, 0};
        if (::poll(&poll, 1, patience) <= 0)
            return;
        const ssize_t count = ::recv(m_socket, buffer, sizeof buffer, 0);
        if (count > 0)
            m_received.append(buffer, count);
        else
            m_end = count == 0 ? End::Closed : End::Reset;
    }
}

QByteArray StreamClient::head() const
{
    const qsizetype end = m_received.indexOf("\r\n\r\n");
    return end < 0 ? QByteArray() : m_received.first(end);
}

QByteArray StreamClient::body() const
{
    const qsizetype end = m_received.indexOf("\r\n\r\n");
    return end < 0 ? QByteArray() : m_received.sliced(end + 4);
}

} // namespace orvel::test
