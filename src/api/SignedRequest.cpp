#include "api/SignedRequest.h"

#include "api/Signature.h"
#include "api/StationConfiguration.h"
#include "platform/foundation/FormatText.h"

namespace orvel {

namespace {

std::shared_ptr<HttpRequest> signedRequest(const QString &url, const QString &path, const QString &signingKey,
                                           const QString &publicKey)
{
    const QString time = glob_CurrentTime();
    auto request = std::make_shared<HttpRequest>(url);
    request->setTimeOutSeconds(60);
    request->addRequestHeader(QStringLiteral("X-Public-Key"), publicKey);
    request->addRequestHeader(QStringLiteral("X-Request-Hash"), glob_hmacsha1(path + time, signingKey));
    request->addRequestHeader(QStringLiteral("X-Request-Timestamp"), time);
    request->addRequestHeader(QStringLiteral("Content-Type"),
                              QStringLiteral("application/json; charset=utf-8"));
    request->setRequestMethod("POST");
    return request;
}

} // namespace

std::shared_ptr<HttpRequest> makeSignedRequest(const QString &path)
{
    const StationConfiguration &station = StationConfiguration::current();
    const QString url = formatPath(station.siteUrl + QStringLiteral("/api"), path);
    return signedRequest(url, formatText(path), station.stationSigningKey, station.stationPublicKey);
}

std::shared_ptr<HttpRequest> makeSignedNetworkRequest()
{
    const StationConfiguration &station = StationConfiguration::current();
    return signedRequest(station.networkWebradioUrl, QStringLiteral("webradio"), station.networkSigningKey,
                         station.networkPublicKey);
}

} // namespace orvel
