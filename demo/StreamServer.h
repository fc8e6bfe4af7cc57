#pragma once

#include "demo/StreamSession.h"

#include <atomic>
#include <list>
#include <memory>
#include <thread>

namespace orvel::demo {

// Serves the live streams on a port of their own, with one thread a listener. Without an HTTP library, since
// streaming servers answer in ways that none allows.
class StreamServer
{
public:
    // Listens on 127.0.0.1; port 0 takes any free one. Returns nullptr when the port is taken.
    static std::unique_ptr<StreamServer> listen(quint16 port);
    ~StreamServer();
    StreamServer(const StreamServer &) = delete;
    StreamServer &operator=(const StreamServer &) = delete;

    quint16 port() const { return m_port; }
    // Begins to answer. `content` outlives the server.
    void start(const StationContent &content, const StreamSettings &settings);

private:
    struct Visit
    {
        explicit Visit(int socket) : connection(socket) {}
        Connection connection;
        std::atomic<bool> over = false;
        std::jthread thread;
    };

    StreamServer(int socket, quint16 port) : m_socket(socket), m_port(port) {}
    void acceptAll();
    void welcome(int socket);
    Channel *channel(const QString &stream);

    int m_socket;
    quint16 m_port;
    StreamSettings m_settings;
    QString m_siteUrl;
    std::list<Channel> m_channels;
    std::list<Visit> m_visits; // touched by the accepting thread alone, and by the destructor after it
    std::stop_source m_stop;
    std::jthread m_acceptor;
};

} // namespace orvel::demo
