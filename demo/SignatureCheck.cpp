#include "demo/SignatureCheck.h"

#include <QMessageAuthenticationCode>

#include <algorithm>
#include <utility>

namespace orvel::demo {

namespace {

bool isTimestamp(const QByteArray &text)
{
    return !text.isEmpty() && text.size() <= 12 &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

SignatureCheck::SignatureCheck(KeyPair keys) : m_keys(std::move(keys)) {}

QString SignatureCheck::refusal(const WebRequest &request, const QByteArray &endpoint, qint64 now) const
{
    if (request.headers.value("x-public-key") != m_keys.open)
        return QStringLiteral("Cette application n'est pas autorisée à utiliser le service.");
    const QByteArray timestamp = request.headers.value("x-request-timestamp");
    if (!isTimestamp(timestamp))
        return QStringLiteral("L'heure de la demande est absente ou illisible.");
    if (qAbs(timestamp.toLongLong() - now) > toleranceSeconds)
        return QStringLiteral("La demande est périmée : vérifiez l'heure de votre appareil.");
    const QByteArray expected =
        QMessageAuthenticationCode::hash(endpoint + timestamp, m_keys.signing, QCryptographicHash::Sha1)
            .toBase64();
    if (request.headers.value("x-request-hash") != expected)
        return QStringLiteral("La signature de la demande n'est pas valable.");
    return {};
}

} // namespace orvel::demo
