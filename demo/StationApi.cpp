#include "demo/StationApi.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace orvel::demo {

namespace {

constexpr auto json = "application/json; charset=utf-8";

WebAnswer failure(int status, const QString &message)
{
    const QJsonObject error{{QStringLiteral("message"), message}};
    const QJsonObject envelope{{QStringLiteral("error"), error}};
    return {status, json, QJsonDocument(envelope).toJson(QJsonDocument::Compact)};
}

} // namespace

StationApi::StationApi(KeyPair keys, QByteArray webradio)
    : check_(std::move(keys)), webradio_(std::move(webradio))
{
}

std::optional<WebAnswer> StationApi::answer(const WebRequest &request) const
{
    static const QString prefix = QStringLiteral("/api/");
    if (!request.path.startsWith(prefix))
        return {};
    if (!request.post)
        return failure(405, QStringLiteral("Le service n'accepte que les demandes POST."));
    // A client signs what it typed, a question mark and what follows included.
    QByteArray path = request.path.mid(prefix.size()).toUtf8();
    if (!request.query.isEmpty())
        path += '?' + QByteArray::fromPercentEncoding(request.query);
    const QString refusal = check_.refusal(request, path, QDateTime::currentSecsSinceEpoch());
    return refusal.isEmpty() ? endpoint(path) : failure(403, refusal);
}

WebAnswer StationApi::endpoint(const QByteArray &path) const
{
    if (path == "webradio")
        return {200, json, webradio_};
    return failure(404, QStringLiteral("Cette rubrique n'est pas encore disponible."));
}

} // namespace orvel::demo
