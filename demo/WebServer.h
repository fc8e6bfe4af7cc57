#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <thread>

namespace httplib {
class Server;
}

namespace orvel::demo {

struct WebRequest
{
    bool post = false;
    QString path;                          // decoded
    QByteArray query;                      // as sent, without the question mark
    QHash<QByteArray, QByteArray> headers; // names in lower case
    QByteArray body;
};

struct WebAnswer
{
    int status = 200;
    QByteArray type;
    QByteArray body;
    int maxAge = 0;           // seconds a client may keep it without asking again
    bool takesRanges = false; // says so; every answer can be had in parts
};

// An HTTP server on 127.0.0.1 with threads of its own.
class WebServer
{
public:
    // Called on the server's threads, several at a time.
    using Handler = std::function<WebAnswer(const WebRequest &)>;

    // Port 0 takes any free one. Returns nullptr when the port is taken.
    static std::unique_ptr<WebServer> listen(quint16 port);
    ~WebServer();
    WebServer(const WebServer &) = delete;
    WebServer &operator=(const WebServer &) = delete;

    quint16 port() const { return m_port; }
    // Begins to answer.
    void start(Handler handler);

private:
    WebServer();

    std::unique_ptr<httplib::Server> m_server;
    quint16 m_port = 0;
    std::jthread m_thread;
};

} // namespace orvel::demo
