#include "support/ScriptedServer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel::test {

namespace {

qsizetype bodyLength(const QByteArray &head)
{
    const qsizetype field = head.toLower().indexOf("\r\ncontent-length:");
    return field < 0
               ? 0
               : head.mid(field + 17, head.indexOf("\r\n", field + 2) - field - 17).trimmed().toLongLong();
}

} // namespace

QByteArray httpHead(const QByteArray &fields, const QByteArray &statusLine)
{
    return statusLine + "\r\n" + fields + "\r\n";
}

Script answer(const QByteArray &body, const QByteArray &statusLine, const QByteArray &fields)
{
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    return {Send{httpHead(length + fields, statusLine)}, Send{body}};
}

ScriptedServer::ScriptedServer(Script script) : ScriptedServer(std::vector<Script>{std::move(script)}) {}

ScriptedServer::ScriptedServer(std::vector<Script> scripts) : m_scripts(std::move(scripts))
{
    listen();
    m_acceptor = std::thread([this] { accept(); });
}

ScriptedServer::~ScriptedServer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        ::shutdown(m_listener, SHUT_RDWR);
        for (const Connection &connection : m_connections) {
            if (connection.open)
                ::shutdown(connection.socket, SHUT_RDWR);
        }
        m_changed.notify_all();
    }
    m_acceptor.join();
    for (Connection &connection : m_connections)
        connection.thread.join();
    ::close(m_listener);
}

QString ScriptedServer::url(const QString &path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
}

std::vector<QByteArray> ScriptedServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

qint64 ScriptedServer::bytesSent() const
{
    const std::lock_guard lock(m_mutex);
    return m_bytesSent;
}

int ScriptedServer::openConnections() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(std::count_if(m_connections.begin(), m_connections.end(),
                                          [](const Connection &c) { return c.open; }));
}

bool ScriptedServer::isAtRest() const
{
    const std::lock_guard lock(m_mutex);
    return !m_connections.empty() && std::ranges::all_of(m_connections, [](const Connection &connection) {
        return connection.isWaiting || !connection.open;
    });
}

void ScriptedServer::release()
{
    const std::lock_guard lock(m_mutex);
    ++m_releases;
    m_changed.notify_all();
}

void ScriptedServer::listen()
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0 ||
        ::listen(m_listener, 64) != 0)
        qFatal("No port for the scripted server");
    ::getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size);
    m_port = ntohs(address.sin_port);
}

void ScriptedServer::accept()
{
    for (std::size_t number = 0;; ++number) {
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard lock(m_mutex);
        if (m_stopping || socket < 0) {
            if (socket >= 0)
                ::close(socket);
            return;
        }
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        const Script &script = m_scripts.at(std::min(number, m_scripts.size() - 1));
        Connection &connection = m_connections.emplace_back();
        connection.socket = socket;
        connection.thread = std::thread([this, &connection, &script] { serve(connection, script); });
    }
}

void ScriptedServer::serve(Connection &connection, const Script &script)
{
    const int socket = connection.socket;
    bool over = !readRequest(socket);
    for (auto step = script.begin(); !over && step != script.end(); ++step)
        over = !run(*step, connection);
    // What the client still has to read must not be reset: wait until it leaves, too.
    ::shutdown(socket, SHUT_WR);
    waitUntilClientLeaves(connection);
    const std::lock_guard lock(m_mutex);
    connection.open = false;
    ::close(socket);
}

bool ScriptedServer::readRequest(int socket)
{
    QByteArray request;
    std::array<char, 4096> piece;
    for (qsizetype end = -1; end < 0 || request.size() < end + 4 + bodyLength(request.left(end + 2));
         end = request.indexOf("\r\n\r\n")) {
        const auto count = ::recv(socket, piece.data(), piece.size(), 0);
        if (count <= 0)
            return false;
        request.append(piece.data(), count);
    }
    const std::lock_guard lock(m_mutex);
    m_requests.push_back(request);
    return true;
}

bool ScriptedServer::run(const Step &step, Connection &connection)
{
    const int socket = connection.socket;
    if (const auto *const it = std::get_if<Send>(&step))
        return send(socket, it->bytes);
    if (std::holds_alternative<NextRequest>(step))
        return readRequest(socket);
    if (const auto *const it = std::get_if<Pause>(&step))
        return sleep(it->seconds);
    if (std::holds_alternative<WaitForRelease>(step)) {
        std::unique_lock lock(m_mutex);
        connection.isWaiting = true;
        m_changed.wait(lock, [this] { return m_stopping || m_releases > 0; });
        connection.isWaiting = false;
        m_releases -= !m_stopping;
        return !m_stopping;
    }
    if (const auto *const it = std::get_if<SendForever>(&step)) {
        while (send(socket, it->bytes) && sleep(it->secondsBetween)) {
        }
    } else if (std::holds_alternative<Stall>(step)) {
        waitUntilClientLeaves(connection);
    } else if (std::holds_alternative<Reset>(step)) {
        const linger atOnce{1, 0};
        ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        // The descriptor stays ours until the connection is marked as closed.
        sockaddr unspecified{};
        unspecified.sa_family = AF_UNSPEC;
        ::connect(socket, &unspecified, sizeof unspecified);
    }
    return false;
}

void ScriptedServer::waitUntilClientLeaves(Connection &connection)
{
    {
        const std::lock_guard lock(m_mutex);
        connection.isWaiting = true;
    }
    std::array<char, 4096> rest;
    while (::recv(connection.socket, rest.data(), rest.size(), 0) > 0) {
    }
}

bool ScriptedServer::send(int socket, const QByteArray &script)
{
    QByteArray bytes = script;
    bytes.replace("{server}", url({}).toUtf8());
    for (qsizetype sent = 0; sent < bytes.size();) {
        const auto count =
            ::send(socket, bytes.data() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += count;
        const std::lock_guard lock(m_mutex);
        m_bytesSent += count;
    }
    return true;
}

bool ScriptedServer::sleep(double seconds)
{
    std::unique_lock lock(m_mutex);
    return !m_changed.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return m_stopping; });
}

} // namespace orvel::test
