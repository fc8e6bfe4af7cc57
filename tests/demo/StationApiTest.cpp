#include "demo/DemoStation.h"
#include "demo/SignatureCheck.h"

#include <QDateTime>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageAuthenticationCode>
#include <QUrl>

#include <gtest/gtest.h>
#include <httplib.h>

using namespace orvel;

namespace {

const DemoStation::Options keys = {
    .stationSigningKey = "cle-de-la-station",
    .stationPublicKey = "station",
    .networkSigningKey = "cle-du-reseau",
    .networkPublicKey = "reseau",
};

struct Answer
{
    int status = -1;
    std::string etag;
    QByteArray body;
};

Answer ask(const QString &address, const httplib::Headers &headers = {}, bool posts = false)
{
    const QUrl url(address);
    httplib::Client client(url.host().toStdString(), url.port());
    const std::string target = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority).toStdString();
    const httplib::Result result = posts ? client.Post(target, headers, "", "application/json; charset=utf-8")
                                         : client.Get(target, headers);
    if (!result)
        return {};
    return {result->status, result->get_header_value("ETag"), QByteArray::fromStdString(result->body)};
}

httplib::Headers signedHeaders(const QByteArray &openKey, const QByteArray &key, const QByteArray &text)
{
    const QByteArray time = QByteArray::number(QDateTime::currentSecsSinceEpoch());
    const QByteArray hash =
        QMessageAuthenticationCode::hash(text + time, key, QCryptographicHash::Sha1).toBase64();
    return {{"X-Public-Key", openKey.toStdString()},
            {"X-Request-Hash", hash.toStdString()},
            {"X-Request-Timestamp", time.toStdString()}};
}

} // namespace

TEST(SignatureCheckTest, AgreesWithAKnownHash)
{
    const demo::SignatureCheck check({"secret-de-test", "publique"});
    demo::WebRequest request;
    request.headers = {{"x-public-key", "publique"},
                       {"x-request-timestamp", "1400000000"},
                       {"x-request-hash", "kaASwztc8mLaSHE9XA6MUKdV/JY="}};
    EXPECT_EQ(check.refusal(request, "webradio", 1400000300), QString());
    EXPECT_EQ(check.refusal(request, "webradio", 1399999700), QString());
    EXPECT_NE(check.refusal(request, "webradio", 1400000301), QString());
    EXPECT_NE(check.refusal(request, "webradio", 1399999699), QString());
    EXPECT_NE(check.refusal(request, "playlist", 1400000000), QString());
}

TEST(StationApiTest, RefusesWhatIsNotSignedForTheService)
{
    const auto station = DemoStation::start(keys);
    const QString site = station->siteUrl() + "/api/webradio";
    const QString network = station->networkWebradioUrl();
    const auto byStation = signedHeaders("station", "cle-de-la-station", "webradio");
    const auto byNetwork = signedHeaders("reseau", "cle-du-reseau", "webradio");
    const struct
    {
        const char *name;
        QString url;
        httplib::Headers headers;
        int status;
    } cases[] = {
        {"signed", site, byStation, 200},
        {"unsigned", site, {}, 403},
        {"of the network", site, byNetwork, 403},
        {"of no endpoint", station->siteUrl() + "/api/rien",
         signedHeaders("station", "cle-de-la-station", "rien"), 404},
        {"login, unsigned", station->siteUrl() + "/api/login", {}, 403},
        {"to the network", network, byNetwork, 200},
        {"to the network with the station's key", network, byStation, 403},
    };
    for (const auto &test : cases) {
        const Answer answer = ask(test.url, test.headers, true);
        EXPECT_EQ(answer.status, test.status) << test.name;
        QJsonValue envelope = QJsonDocument::fromJson(answer.body).object();
        if (test.url.endsWith("/login"))
            envelope = envelope["0"];
        EXPECT_EQ(envelope["content"].toArray().isEmpty(), test.status != 200) << test.name;
        EXPECT_EQ(envelope["error"]["message"].toString().isEmpty(), test.status == 200) << test.name;
    }
}

TEST(StationApiTest, DrawsEveryPictureOfTheListButOne)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "Qt, which is not instrumented, paints gradients on a thread pool of its own";
#endif
    const auto station = DemoStation::start(keys);
    const auto headers = signedHeaders("station", "cle-de-la-station", "webradio");
    const QJsonDocument list =
        QJsonDocument::fromJson(ask(station->siteUrl() + "/api/webradio", headers, true).body);
    const QString media = list["media_url"].toString() + '/';
    int missing = 0;
    for (const QJsonValue &radio : list["content"].toArray()) {
        const Answer cover = ask(media + radio["file"].toString());
        missing += cover.status == 404;
        EXPECT_EQ(QImage::fromData(cover.body).size(), cover.status == 200 ? QSize(600, 600) : QSize(0, 0));
        const QString logo = media + radio["thumb_smartphone"].toString();
        const Answer first = ask(logo);
        EXPECT_EQ(QImage::fromData(first.body).size(), QSize(160, 160));
        EXPECT_EQ(ask(logo, {{"If-None-Match", first.etag}}).status, 304);
    }
    EXPECT_EQ(missing, 1);
}

TEST(StationApiTest, TwoStationsDoNotShareAPort)
{
    const auto first = DemoStation::start({});
    DemoStation::Options same;
    same.port = quint16(QUrl(first->siteUrl()).port());
    EXPECT_EQ(DemoStation::start(same), nullptr);
}
