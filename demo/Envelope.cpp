#include "demo/Envelope.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace orvel::demo {

namespace {

WebAnswer answerWith(int status, const QJsonObject &envelope)
{
    return {status, jsonType, QJsonDocument(envelope).toJson(QJsonDocument::Compact)};
}

} // namespace

WebAnswer contentAnswer(const QJsonValue &content)
{
    return answerWith(200, {{QStringLiteral("content"), content}});
}

WebAnswer errorAnswer(const QByteArray &endpoint, int status, const QString &message)
{
    const QJsonObject error{{QStringLiteral("message"), message}};
    const QJsonObject envelope{{QStringLiteral("error"), error}};
    const bool goesDeeper = endpoint == "login" || endpoint == "newsletter";
    return answerWith(status, goesDeeper ? QJsonObject{{QStringLiteral("0"), envelope}} : envelope);
}

} // namespace orvel::demo
