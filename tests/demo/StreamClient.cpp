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
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const QUrl url(address);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(quint16(url.port()));
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::connect(socket_, reinterpret_cast<sockaddr *>(&to), sizeof to);
    const QByteArray target = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    const QByteArray request = "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + headers + "\r\n";
    ::send(socket_, request.constData(), std::size_t(request.size()), MSG_NOSIGNAL);
}

StreamClient::~StreamClient() { ::close(socket_); }

void StreamClient::readBody(qsizetype bytes, int patience)
{
    char buffer[16384];
    while (end_ == End::Open && (head().isEmpty() || body().size() < bytes)) {
        pollfd poll{socket_, POLLIN, 0};
        if (::poll(&poll, 1, patience) <= 0)
            return;
        const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
        if (count > 0)
            received_.append(buffer, count);
        else
            end_ = count == 0 ? End::Closed : End::Reset;
    }
}

QByteArray StreamClient::head() const
{
    const qsizetype end = received_.indexOf("\r\n\r\n");
    return end < 0 ? QByteArray() : received_.first(end);
}

QByteArray StreamClient::body() const
{
    const qsizetype end = received_.indexOf("\r\n\r\n");
    return end < 0 ? QByteArray() : received_.sliced(end + 4);
}

QByteArray StreamClient::audio(qsizetype interval, QByteArrayList *blocks) const
{
    const QByteArray all = body();
    QByteArray audio;
    qsizetype at = 0;
    while (at < all.size()) {
        audio += all.mid(at, interval);
        at += interval;
        if (at >= all.size())
            break;
        const qsizetype length = qsizetype(all[at]) * 16;
        blocks->append(all.mid(at + 1, length));
        at += 1 + length;
    }
    return audio;
}

qsizetype frameLength(const QByteArray &audio, qsizetype at)
{
    if (audio.size() - at < 7)
        return 0;
    const auto byte = [&](qsizetype i) { return int(quint8(audio[at + i])); };
    if (byte(0) == 0xFF && byte(1) == 0xFB && (byte(2) & 0xFC) == 0x90) // 128 kbit/s, 44.1 kHz
        return 417 + ((byte(2) >> 1) & 1);
    if (byte(0) == 0xFF && byte(1) == 0xF1 && byte(2) == 0x50) // AAC-LC, 44.1 kHz
        return ((byte(3) & 3) << 11) | (byte(4) << 3) | (byte(5) >> 5);
    return 0;
}

bool isFrames(const QByteArray &audio)
{
    qsizetype at = 0;
    while (audio.size() - at >= 7) {
        const qsizetype length = frameLength(audio, at);
        if (length < 7)
            return false;
        at += length;
    }
    return at > 0;
}

} // namespace orvel::test
