#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrlQuery>

#include <optional>

namespace orvel::demo {

class Connection;

// The head of a listener's request.
struct StreamRequest
{
    QByteArray method;
    QString path; // decoded, without the first slash
    QUrlQuery query;
    QHash<QByteArray, QByteArray> headers; // names in lower case

    // nullopt when the listener sends no valid request in time.
    static std::optional<StreamRequest> read(Connection &connection);
    static std::optional<StreamRequest> parse(const QByteArray &head);
};

} // namespace orvel::demo
