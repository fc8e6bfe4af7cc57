#pragma once

#include <QByteArray>
#include <QString>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <variant>
#include <vector>

namespace orvel::test {

// The steps of an answer. Each piece sent leaves in a segment of its own; "{server}" in it stands for the
// server's address, as url() gives it without a path.
struct Send
{
    QByteArray bytes;
};
// Sends `bytes` again and again until the client leaves or the server goes.
struct SendForever
{
    QByteArray bytes;
    double secondsBetween = 0;
};
struct Pause
{
    double seconds;
};
// Waits for one release() of its own; a release given before counts.
struct WaitForRelease
{
};
// Says nothing more, and waits until the client leaves.
struct Stall
{
};
// An orderly end, also what follows the last step.
struct Close
{
};
// The connection is reset: whatever the client has not read yet is lost.
struct Reset
{
};
// Reads one more request on the same connection.
struct NextRequest
{
};
using Step = std::variant<Send, SendForever, Pause, NextRequest, WaitForRelease, Stall, Close, Reset>;
using Script = std::vector<Step>;

// The head of an answer. `fields` are whole lines ("icy-metaint: 8\r\n").
QByteArray httpHead(const QByteArray &fields = {}, const QByteArray &statusLine = "HTTP/1.1 200 OK");

// A whole answer with its length: a head, then the body.
Script answer(const QByteArray &body, const QByteArray &statusLine = "HTTP/1.1 200 OK",
              const QByteArray &fields = {});

// A server on 127.0.0.1 that reads a request on each connection and then does what its script says, byte for
// byte. Threads of its own; any thread may ask. Going away ends every connection.
class ScriptedServer
{
public:
    // Every connection runs the same script.
    explicit ScriptedServer(Script script);
    // The n-th connection runs the n-th script; later ones run the last.
    explicit ScriptedServer(std::vector<Script> scripts);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer &) = delete;
    ScriptedServer &operator=(const ScriptedServer &) = delete;

    // `path` begins with "/".
    QString url(const QString &path = QStringLiteral("/")) const;
    // The requests that have arrived, head and body, in order.
    std::vector<QByteArray> requests() const;
    std::size_t requestCount() const { return requests().size(); }
    // How many bytes all connections have sent so far.
    qint64 bytesSent() const;
    // Connections that neither side has closed yet.
    int openConnections() const;
    // Whether the server has nothing more to send: it waits for a release or for its clients, of which there
    // has been one.
    bool isAtRest() const;
    // Lets one WaitForRelease go on.
    void release();

private:
    struct Connection
    {
        int socket = -1;
        bool open = true;
        bool isWaiting = false; // to be released, or for the client to leave
        std::thread thread;
    };
    void listen();
    void accept();
    void serve(Connection &connection, const Script &script);
    bool readRequest(int socket);
    // False when the connection is over.
    bool run(const Step &step, Connection &connection);
    bool send(int socket, const QByteArray &script);
    void waitUntilClientLeaves(Connection &connection);
    bool sleep(double seconds);

    const std::vector<Script> m_scripts;
    int m_listener = -1;
    quint16 m_port = 0;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stopping = false;
    int m_releases = 0;
    qint64 m_bytesSent = 0;
    std::vector<QByteArray> m_requests;
    std::list<Connection> m_connections;
    std::thread m_acceptor;
};

} // namespace orvel::test
