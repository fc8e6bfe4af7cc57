#include "api/PostData.h"

#include "api/SignedRequest.h"
#include "api/json/JsonText.h"
#include "platform/foundation/Log.h"

namespace orvel {

void PostData::postGetSecondSection(const QString &path) { run(makeSignedRequest(path)); }

void PostData::postGetTarvaneRadio() { run(makeSignedNetworkRequest()); }

void PostData::postCommints(const QString &) { run(makeSignedRequest(QStringLiteral(""))); }

void PostData::run(const std::shared_ptr<HttpRequest> &request)
{
    request->setDelegate(shared_from_this());
    request->startSynchronous();
}

void PostData::requestFinished(HttpRequest &request)
{
    const JsonValue response = JSONValue(request.responseString());
    qCInfo(logApi).noquote().nospace() << "diction-->" << response.text();
    if (!m_delegate)
        return;
    if (response.isAbsent())
        m_delegate->PostFail(QStringLiteral("Error in data finding"));
    else
        m_delegate->PostSuccess(response);
}

void PostData::requestFailed(HttpRequest &request)
{
    const QString description = request.error().localizedDescription;
    qCWarning(logApi).noquote() << description;
    if (m_delegate)
        m_delegate->PostFail(description);
}

} // namespace orvel
