#include "servers/IcecastServer.h"

#include "support/TestLoop.h"

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

namespace orvel::test {

namespace {

const QByteArray password = "orvel-essai";

constexpr auto configuration = R"(<icecast>
  <hostname>127.0.0.1</hostname>
  <limits>
    <sources>4</sources>
    <queue-size>1048576</queue-size>
    <source-timeout>60</source-timeout>
    <burst-size>%1</burst-size>
  </limits>
  <authentication>
    <source-password>%2</source-password>
    <admin-user>admin</admin-user>
    <admin-password>%2</admin-password>
  </authentication>
  <listen-socket><port>%3</port><bind-address>127.0.0.1</bind-address></listen-socket>
  <paths><basedir>%4</basedir><logdir>%4</logdir><webroot>%4</webroot><adminroot>%4</adminroot></paths>
  <logging><accesslog>access.log</accesslog><errorlog>error.log</errorlog></logging>
</icecast>
)";

// Below those that outgoing connections take, so that it stays free while the server is restarted.
quint16 freePort()
{
    QTcpServer server;
    while (
        !server.listen(QHostAddress::LocalHost, quint16(QRandomGenerator::global()->bounded(20000, 30000)))) {
    }
    return server.serverPort();
}

} // namespace

IcecastServer::IcecastServer(int burstBytes) : m_burstBytes(burstBytes), m_process(logFile("output.log")) {}

QString IcecastServer::start()
{
    using enum QFileDevice::Permission;
    QFile::setPermissions(m_folder.path(),
                          ReadOwner | WriteOwner | ExeOwner | ReadOther | WriteOther | ExeOther);
    QString failure;
    // A free port may be taken by another before the server has it; a restart keeps the port.
    const bool isRestart = m_port != 0;
    for (int attempt = 0; attempt < 5; ++attempt) {
        if (!isRestart)
            m_port = freePort();
        if (!writeConfiguration())
            return "The configuration can't be written";
        failure = m_process.start("icecast2", {"-c", logFile("icecast.xml")});
        if (!failure.isNull())
            return failure;
        if (waitUntil([this] { return !m_process.isRunning() || answers(); }) && m_process.isRunning())
            return {};
        m_process.end(SIGKILL);
    }
    QFile output(logFile("output.log"));
    output.open(QIODevice::ReadOnly);
    return "icecast2 does not answer: " + output.readAll();
}

QString IcecastServer::url(const QString &path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
}

QString IcecastServer::sourceUrl(const QString &mount) const
{
    return QStringLiteral("icecast://source:%1@127.0.0.1:%2%3").arg(password).arg(m_port).arg(mount);
}

bool IcecastServer::setTitle(const QString &mount, const QString &title) const
{
    const QString text = QString::fromLatin1(QUrl::toPercentEncoding(title));
    return get(QStringLiteral("/admin/metadata?mount=%1&mode=updinfo&song=%2").arg(mount, text))
        .contains("<return>1</return>");
}

int IcecastServer::listeners() const
{
    // The server's own count comes before those of its sources.
    static const QRegularExpression all("<listeners>(\\d+)</listeners>.*<sources>",
                                        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = all.match(get("/admin/stats"));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

QByteArray IcecastServer::get(const QString &path, qsizetype max) const
{
    constexpr int patience = 5000;
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
    if (!socket.waitForConnected(patience))
        return {};
    socket.write("GET " + path.toUtf8() + " HTTP/1.0\r\nAuthorization: Basic " +
                 QByteArray("admin:" + password).toBase64() + "\r\n\r\n");
    QByteArray answer;
    while (answer.size() < max && (socket.bytesAvailable() > 0 || socket.waitForReadyRead(patience)))
        answer += socket.read(max - answer.size());
    return answer;
}

bool IcecastServer::writeConfiguration() const
{
    QFile file(logFile("icecast.xml"));
    const QByteArray text = QString::fromLatin1(configuration)
                                .arg(m_burstBytes)
                                .arg(QString::fromLatin1(password))
                                .arg(m_port)
                                .arg(m_folder.path())
                                .toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
}

bool IcecastServer::answers() const { return get("/admin/stats").contains("<server_id>Icecast"); }

} // namespace orvel::test
