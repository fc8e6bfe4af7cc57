#include "demo/StationApi.h"

#include "demo/Accounts.h"
#include "demo/Envelope.h"

#include <QDateTime>

#include <utility>

namespace orvel::demo {

StationApi::StationApi(KeyPair keys, Lists lists, Accounts *accounts)
    : m_check(std::move(keys)), m_lists(std::move(lists)), m_accounts(accounts)
{
}

std::optional<WebAnswer> StationApi::answer(const WebRequest &request) const
{
    static const QString prefix = QStringLiteral("/api/");
    if (!request.path.startsWith(prefix))
        return {};
    // A client signs what it typed, a question mark and what follows included.
    QByteArray path = request.path.mid(prefix.size()).toUtf8();
    if (!request.query.isEmpty())
        path += '?' + QByteArray::fromPercentEncoding(request.query);
    if (!request.post)
        return errorAnswer(path, 405, QStringLiteral("Le service n'accepte que les demandes POST."));
    const QString refusal = m_check.refusal(request, path, QDateTime::currentSecsSinceEpoch());
    return refusal.isEmpty() ? endpoint(path, request.body) : errorAnswer(path, 403, refusal);
}

WebAnswer StationApi::endpoint(const QByteArray &path, const QByteArray &form) const
{
    if (const auto list = m_lists.find(path); list != m_lists.end())
        return {200, jsonType, list->second};
    if (const auto answer = m_accounts ? m_accounts->answer(path, form) : std::nullopt)
        return *answer;
    return errorAnswer(path, 404, QStringLiteral("Cette rubrique n'est pas encore disponible."));
}

} // namespace orvel::demo
