#include "demo/DemoStation.h"
#include "demo/SignatureCheck.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageAuthenticationCode>
#include <QUrl>

#include <gtest/gtest.h>
#include <httplib.h>

using namespace orvel;

namespace {

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
    const auto station = DemoStation::start({.stationSigningKey = "cle-de-la-station",
                                             .stationPublicKey = "station",
                                             .networkSigningKey = "cle-du-reseau",
                                             .networkPublicKey = "reseau"});
    const QString site = station->siteUrl() + "/api/webradio";
    const QString login = station->siteUrl() + "/api/login";
    const QString network = station->networkWebradioUrl();
    const auto byStation = signedHeaders("station", "cle-de-la-station", "webradio");
    const auto byNetwork = signedHeaders("reseau", "cle-du-reseau", "webradio");
    const std::tuple<QString, httplib::Headers, int> cases[] = {
        {site, byStation, 200}, {site, {}, 403},           {site, byNetwork, 403},
        {login, {}, 403},       {network, byNetwork, 200}, {network, byStation, 403},
    };
    for (const auto &[address, headers, status] : cases) {
        SCOPED_TRACE(address.toStdString());
        const QUrl url(address);
        httplib::Client client(url.host().toStdString(), url.port());
        const auto answer = client.Post(url.path().toStdString(), headers, "", "application/json");
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, status);
        QJsonValue envelope = QJsonDocument::fromJson(QByteArray::fromStdString(answer->body)).object();
        if (address == login)
            envelope = envelope["0"];
        EXPECT_EQ(envelope["content"].toArray().isEmpty(), status != 200);
        EXPECT_EQ(envelope["error"]["message"].toString().isEmpty(), status == 200);
    }
}

TEST(SoundBookTest, ServesEachKindWithRanges)
{
    const auto station = DemoStation::start({});
    httplib::Client client(station->siteUrl().toStdString());
    client.set_read_timeout(60); // a sound is made when it is first asked for
    const std::tuple<const char *, const char *, std::size_t, const char *> cases[] = {
        {"mp3", "audio/mpeg", 0, "\xff\xfb"}, {"aac", "audio/aac", 0, "\xff\xf1"},
        {"m4a", "audio/mp4", 4, "ftypM4A "},  {"wav", "audio/wav", 0, "RIFF"},
        {"aiff", "audio/aiff", 0, "FORM"},
    };
    for (const auto &[type, contentType, at, bytes] : cases) {
        SCOPED_TRACE(type);
        const std::string path = std::string("/sons/la-radio.") + type;
        const auto whole = client.Get(path);
        ASSERT_TRUE(whole);
        EXPECT_EQ(whole->get_header_value("Content-Type"), contentType);
        EXPECT_EQ(whole->get_header_value("Accept-Ranges"), "bytes");
        EXPECT_EQ(whole->body.find(bytes), at);
        EXPECT_GT(whole->body.size(), 400'000u);
        const auto part = client.Get(path, {{"Range", "bytes=1000-" + std::to_string(whole->body.size())}});
        ASSERT_TRUE(part);
        EXPECT_EQ(part->status, 206);
        EXPECT_EQ(part->body, whole->body.substr(1000));
    }
    EXPECT_EQ(client.Get("/sons/la-radio.ogg")->status, 404);
    EXPECT_EQ(client.Get("/sons/nulle.mp3")->status, 404);
}
