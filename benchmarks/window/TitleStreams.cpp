#include "benchmarks/window/TitleStreams.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace orvel::benchmark {

namespace {

constexpr qsizetype interval = 16000;
constexpr qsizetype burst = 64 * 1024;
constexpr qsizetype piece = 1400;
constexpr auto pieceTime = std::chrono::microseconds(87'500);

QByteArray titleBlock(int stream)
{
    const QByteArray number = QByteArray::number(stream);
    QByteArray text = "StreamTitle='Artiste " + number + " - Titre " + number + "';";
    const qsizetype units = (text.size() + 15) / 16;
    text.resize(units * 16, '\0');
    return char(units) + text;
}

QByteArray inIntervals(const QByteArray &sound)
{
    QByteArray framed;
    for (qsizetype at = 0; at + interval <= sound.size(); at += interval)
        framed += sound.mid(at, interval) + '\0';
    return framed;
}

} // namespace

TitleStreams::TitleStreams(int count, const QByteArray &sound, std::chrono::milliseconds answerDelay,
                           std::function<void(double)> roundEnded)
    : m_count(count)
    , m_answerDelay(answerDelay)
    , m_roundEnded(std::move(roundEnded))
    , m_sound(inIntervals(sound))
    , m_listening(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0))
    , m_requests(std::size_t(count))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *const where = reinterpret_cast<sockaddr *>(&address);
    if (m_sound.size() < burst || bind(m_listening, where, size) != 0 || listen(m_listening, 16) != 0 ||
        getsockname(m_listening, where, &size) != 0)
        return;
    m_port = ntohs(address.sin_port);
    m_thread = std::jthread([this](const std::stop_token &stop) { serve(stop); });
}

TitleStreams::~TitleStreams()
{
    m_thread = {};
    for (const Listener &listener : m_listeners)
        close(listener.socket);
    close(m_listening);
}

void TitleStreams::serve(const std::stop_token &stop)
{
    while (!stop.stop_requested()) {
        std::vector<pollfd> sockets{{m_listening, POLLIN, 0}};
        auto due = Clock::now() + std::chrono::milliseconds(100);
        for (const Listener &listener : m_listeners) {
            const short wanted = listener.waiting.isEmpty() ? POLLIN : POLLIN | POLLOUT;
            sockets.push_back({listener.socket, wanted, 0});
            due = std::min(due, listener.next);
        }
        const auto wait = std::max(due - Clock::now(), Clock::duration::zero());
        const timespec time{0, std::chrono::nanoseconds(wait).count()};
        ppoll(sockets.data(), sockets.size(), &time, nullptr);

        readAll();
        for (Listener &listener : m_listeners)
            write(listener, Clock::now());
        if (sockets.front().revents & POLLIN)
            accept();
    }
}

void TitleStreams::accept()
{
    const int socket = accept4(m_listening, nullptr, nullptr, SOCK_NONBLOCK);
    if (socket < 0)
        return;
    readAll(); // who left before this one came is not counted with it
    m_listeners.push_back({socket});
    m_mostListeners = std::max(m_mostListeners, int(m_listeners.size()));
}

void TitleStreams::readAll()
{
    std::erase_if(m_listeners, [this](Listener &listener) {
        if (read(listener))
            return false;
        gone(listener);
        return true;
    });
}

bool TitleStreams::read(Listener &listener)
{
    char bytes[4096];
    ssize_t got = 0;
    while ((got = recv(listener.socket, bytes, sizeof bytes, 0)) > 0) {
        if (listener.stream < 0)
            listener.request.append(bytes, got);
    }
    if (got == 0 || (errno != EAGAIN && errno != EINTR))
        return false;
    if (listener.stream < 0 && listener.request.contains("\r\n\r\n")) {
        const qsizetype begin = listener.request.indexOf('/') + 1;
        const QByteArray path = listener.request.mid(begin, listener.request.indexOf(' ', begin) - begin);
        listener.stream = std::clamp(path.toInt(), 0, m_count - 1);
        ++m_requests[std::size_t(listener.stream)];
        if (listener.stream == 0)
            m_roundBegan = Clock::now();
        listener.next = Clock::now() + m_answerDelay;
    }
    return true;
}

void TitleStreams::write(Listener &listener, Clock::time_point now)
{
    if (listener.next <= now) {
        if (listener.position == 0) {
            listener.waiting = beginning(listener.stream);
            listener.position = burst;
        } else {
            listener.waiting += m_sound.mid(listener.position, piece);
            listener.position += piece;
            if (listener.position >= m_sound.size())
                listener.position = interval + 1; // a whole interval, as the position before
        }
        listener.next = now + pieceTime;
    }
    if (listener.waiting.isEmpty())
        return;
    const ssize_t sent =
        send(listener.socket, listener.waiting.constData(), size_t(listener.waiting.size()), MSG_NOSIGNAL);
    if (sent > 0)
        listener.waiting.remove(0, sent);
}

void TitleStreams::gone(const Listener &listener)
{
    close(listener.socket);
    if (listener.stream >= 0 && listener.stream == m_count - 2)
        m_roundEnded(std::chrono::duration<double>(Clock::now() - m_roundBegan).count());
}

QByteArray TitleStreams::beginning(int stream) const
{
    return "HTTP/1.0 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: Benchmark\r\nicy-br: 128\r\n"
           "icy-metaint: " +
           QByteArray::number(interval) + "\r\n\r\n" + m_sound.first(interval) + titleBlock(stream) +
           m_sound.mid(interval + 1, burst - interval - 1);
}

} // namespace orvel::benchmark
