#include "demo/WebServer.h"

#include <QCryptographicHash>

#include <httplib.h>

namespace orvel::demo {

namespace {

constexpr auto host = "127.0.0.1";

WebRequest readRequest(const httplib::Request &request, bool post)
{
    WebRequest result;
    result.post = post;
    result.path = QString::fromStdString(request.path);
    const std::size_t mark = request.target.find('?');
    if (mark != std::string::npos)
        result.query = QByteArray::fromStdString(request.target.substr(mark + 1));
    for (const auto &[name, value] : request.headers)
        result.headers.insert(QByteArray::fromStdString(name).toLower(), QByteArray::fromStdString(value));
    result.body = QByteArray::fromStdString(request.body);
    return result;
}

void writeAnswer(const WebRequest &request, const WebAnswer &answer, httplib::Response &response)
{
    if (answer.status != 200) // the library makes it 206 for a range
        response.status = answer.status;
    if (answer.maxAge > 0) {
        const QByteArray tag =
            '"' + QCryptographicHash::hash(answer.body, QCryptographicHash::Sha1).toHex() + '"';
        response.set_header("ETag", tag.toStdString());
        response.set_header("Cache-Control", "max-age=" + std::to_string(answer.maxAge));
        if (request.headers.value("if-none-match") == tag) {
            response.status = 304;
            return;
        }
    }
    if (answer.takesRanges)
        response.set_header("Accept-Ranges", "bytes");
    response.set_content(answer.body.constData(), std::size_t(answer.body.size()), answer.type.constData());
}

} // namespace

WebServer::WebServer() : m_server(std::make_unique<httplib::Server>()) {}

std::unique_ptr<WebServer> WebServer::listen(quint16 port)
{
    std::unique_ptr<WebServer> result(new WebServer);
    httplib::Server &server = *result->m_server;
    // The library's default would let two stations share a port.
    server.set_socket_options([](socket_t socket) {
        const int on = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    });
    server.new_task_queue = [] { return new httplib::ThreadPool(4); };
    // An idle connection would hold a thread, and with it the end of the program.
    server.set_keep_alive_max_count(1);
    server.set_keep_alive_timeout(1);
    server.set_payload_max_length(64 * 1024);
    const int bound = port == 0 ? server.bind_to_any_port(host) : server.bind_to_port(host, port) ? port : -1;
    if (bound <= 0)
        return nullptr;
    result->m_port = quint16(bound);
    return result;
}

WebServer::~WebServer()
{
    // The library closes only the port of a server that ran.
    if (m_port != 0 && !m_thread.joinable())
        start([](const WebRequest &) { return WebAnswer{}; });
    m_server->stop();
}

void WebServer::start(Handler handler)
{
    const auto answer = [handler = std::move(handler)](bool post) {
        return [handler, post](const httplib::Request &request, httplib::Response &response) {
            const WebRequest read = readRequest(request, post);
            writeAnswer(read, handler(read), response);
        };
    };
    m_server->Get(".*", answer(false));
    m_server->Post(".*", answer(true));
    m_thread = std::jthread([this] { m_server->listen_after_bind(); });
    // Stopping a server that does not run yet would have no effect.
    while (!m_server->is_running())
        std::this_thread::yield();
}

} // namespace orvel::demo
