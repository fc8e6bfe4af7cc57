#include "demo/StreamRequest.h"

#include "demo/Connection.h"

#include <QUrl>

namespace orvel::demo {

std::optional<StreamRequest> StreamRequest::read(Connection &connection)
{
    constexpr qsizetype maxHead = 16 * 1024;
    QByteArray head;
    while (!head.contains("\r\n\r\n")) {
        const QByteArray piece = connection.receive();
        if (piece.isEmpty() || head.size() > maxHead)
            return {};
        head += piece;
    }
    return parse(head.first(head.indexOf("\r\n\r\n")));
}

std::optional<StreamRequest> StreamRequest::parse(const QByteArray &head)
{
    QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> first = lines.takeFirst().trimmed().split(' ');
    if (first.size() != 3 || !first[1].startsWith('/') || !first[2].startsWith("HTTP/1."))
        return {};
    StreamRequest request;
    request.method = first[0];
    const QUrl target = QUrl::fromEncoded(first[1], QUrl::StrictMode);
    request.path = target.path(QUrl::FullyDecoded).mid(1);
    request.query = QUrlQuery(target);
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.insert(line.first(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
    }
    return request;
}

} // namespace orvel::demo
