#include "servers/FileServer.h"

#include "support/TestLoop.h"

#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <unistd.h>

namespace orvel::test {

namespace {

constexpr auto configuration = R"(
daemon off;
master_process off;
pid %1/nginx.pid;
error_log %1/error.log;
events { worker_connections 64; }
http {
  log_format short '$http_range|$status';
  access_log %1/access.log short;
  client_body_temp_path %1/tmp; proxy_temp_path %1/tmp; fastcgi_temp_path %1/tmp;
  uwsgi_temp_path %1/tmp; scgi_temp_path %1/tmp;
  default_type application/octet-stream;
  send_timeout 1s;
  server {
    listen 127.0.0.1:%2 sndbuf=32k;
    listen 127.0.0.1:%3 ssl;
    ssl_certificate %1/certificate.pem;
    ssl_certificate_key %1/own.pem;
    location / { root %1; }
    location /unknown/ { alias %1/; ssi on; ssi_types *; }
    location /whole/ { alias %1/; max_ranges 0; }
    location /moved/ { rewrite ^/moved/(.*) /again/$1 redirect; }
    location /again/ { rewrite ^/again/(.*) http://127.0.0.1:%2/$1 permanent; }
    location /refused/ { alias %1/; if ($http_range) { return 416; } }
  }
}
)";

// Below those that outgoing connections take, so that they stay free until the server has them.
quint16 freePort(int after)
{
    QTcpServer server;
    for (quint16 port = quint16(after + 1); !server.listen(QHostAddress::LocalHost, port);)
        ++port;
    return server.serverPort();
}

bool runs(const QString &command)
{
    QProcess process;
    process.startCommand(command);
    return process.waitForFinished(60'000) && process.exitCode() == 0;
}

} // namespace

FileServer::FileServer() = default;

FileServer::~FileServer() { end(); }

QString FileServer::start()
{
    if (!runs(QStringLiteral(
                  "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=elsewhere.example -keyout "
                  "%1/own.pem -out %1/certificate.pem")
                  .arg(m_folder.path())))
        return QStringLiteral("openssl makes no certificate");
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    // Somebody else may be quicker at the ports.
    for (int tries = 0; m_server.state() != QProcess::Running; ++tries) {
        if (tries == 3)
            return "nginx (scripts/setup installs it) does not answer: " + m_server.readAll();
        startServer();
    }
    return {};
}

void FileServer::startServer()
{
    m_port = freePort(m_securePort == 0 ? 10'000 + ::getpid() % 9000 : m_securePort);
    m_securePort = freePort(m_port);
    QFile file(path(QStringLiteral("nginx.conf")));
    file.open(QIODevice::WriteOnly);
    file.write(
        QString::fromLatin1(configuration).arg(m_folder.path()).arg(m_port).arg(m_securePort).toUtf8());
    file.close();
    m_server.startCommand("setpriv --pdeathsig KILL /usr/sbin/nginx -p " + m_folder.path() + " -c " +
                          file.fileName());
    m_server.waitForStarted();
    waitUntil([this] { return m_server.state() == QProcess::NotRunning || answers(); });
}

void FileServer::end()
{
    if (m_server.state() != QProcess::NotRunning)
        ::kill(pid_t(m_server.processId()), SIGTERM);
    m_server.waitForFinished();
}

bool FileServer::answers() const
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_securePort);
    return socket.waitForConnected(100);
}

bool FileServer::make(const QString &name, const QString &options) const
{
    return runs(
        QStringLiteral("ffmpeg -hide_banner -nostdin -loglevel error -y -f lavfi -i "
                       "sine=frequency=440:sample_rate=44100:duration=10[tone];anoisesrc=sample_rate=44100:"
                       "amplitude=0.3:duration=10:seed=5[noise];[tone][noise]amix=inputs=2,aformat=channel_"
                       "layouts=stereo %1 %2")
            .arg(options, path(name)));
}

QString FileServer::url(const QString &name, const QString &way) const
{
    return QStringLiteral("http://127.0.0.1:%1/%2%3").arg(m_port).arg(way.isEmpty() ? way : way + u'/', name);
}

QString FileServer::secureUrl(const QString &name) const
{
    return QStringLiteral("https://127.0.0.1:%1/%2").arg(m_securePort).arg(name);
}

QStringList FileServer::requests() const
{
    QFile log(path(QStringLiteral("access.log")));
    if (!log.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace orvel::test
