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
    int status;
    std::string etag;
    QByteArray body;
};

Answer answerOf(const httplib::Result &result)
{
    if (!result)
        return {-1, {}, {}};
    return {result->status, result->get_header_value("ETag"), QByteArray::fromStdString(result->body)};
}

Answer get(const QString &address, const httplib::Headers &headers = {})
{
    const QUrl url(address);
    httplib::Client client(url.host().toStdString(), url.port());
    return answerOf(
        client.Get(url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority).toStdString(), headers));
}

Answer post(const QString &address, const httplib::Headers &headers)
{
    const QUrl url(address);
    httplib::Client client(url.host().toStdString(), url.port());
    return answerOf(client.Post(url.path().toStdString(), headers, "", "application/json; charset=utf-8"));
}

httplib::Headers signedHeaders(const QByteArray &openKey, const QByteArray &key, const QByteArray &text,
                               qint64 timestamp = QDateTime::currentSecsSinceEpoch())
{
    const QByteArray time = QByteArray::number(timestamp);
    const QByteArray hash =
        QMessageAuthenticationCode::hash(text + time, key, QCryptographicHash::Sha1).toBase64();
    return {{"X-Public-Key", openKey.toStdString()},
            {"X-Request-Hash", hash.toStdString()},
            {"X-Request-Timestamp", time.toStdString()}};
}

Answer webradio(const DemoStation &station)
{
    return post(station.siteUrl() + "/api/webradio",
                signedHeaders("station", "cle-de-la-station", "webradio"));
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
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const QString site = station->siteUrl() + "/api/webradio";
    const struct
    {
        const char *name;
        QString url;
        httplib::Headers headers;
        int status;
    } cases[] = {
        {"signed", site, signedHeaders("station", "cle-de-la-station", "webradio"), 200},
        {"unsigned", site, {}, 403},
        {"of an unknown client", site, signedHeaders("autre", "cle-de-la-station", "webradio"), 403},
        {"signed with another key", site, signedHeaders("station", "autre", "webradio"), 403},
        {"signed for another path", site, signedHeaders("station", "cle-de-la-station", "playlist"), 403},
        {"old", site, signedHeaders("station", "cle-de-la-station", "webradio", now - 400), 403},
        {"of the future", site, signedHeaders("station", "cle-de-la-station", "webradio", now + 400), 403},
        {"of the network", site, signedHeaders("reseau", "cle-du-reseau", "webradio"), 403},
        {"signed, of no endpoint", station->siteUrl() + "/api/rien",
         signedHeaders("station", "cle-de-la-station", "rien"), 404},
        {"login, unsigned", station->siteUrl() + "/api/login", {}, 403},
        {"to the network", station->networkWebradioUrl(),
         signedHeaders("reseau", "cle-du-reseau", "webradio"), 200},
        {"to the network with the station's key", station->networkWebradioUrl(),
         signedHeaders("station", "cle-de-la-station", "webradio"), 403},
    };
    for (const auto &test : cases) {
        const Answer answer = post(test.url, test.headers);
        EXPECT_EQ(answer.status, test.status) << test.name;
        QJsonValue envelope = QJsonDocument::fromJson(answer.body).object();
        if (test.url.endsWith("/login"))
            envelope = envelope["0"];
        EXPECT_EQ(envelope["content"].toArray().isEmpty(), test.status != 200) << test.name;
        EXPECT_EQ(envelope["error"]["message"].toString().isEmpty(), test.status == 200) << test.name;
    }
}

TEST(StationApiTest, ListsRadiosOfEveryKind)
{
    const auto station = DemoStation::start(keys);
    const QJsonArray radios = QJsonDocument::fromJson(webradio(*station).body)["content"].toArray();
    EXPECT_GE(radios.size(), 8);
    EXPECT_TRUE(radios[0]["flux_aac"].toString().endsWith(".mp3"));
    QStringList kinds;
    int withoutSubtitle = 0;
    for (const QJsonValue &radio : radios) {
        kinds.append(radio["flux_aac"].toString().section('.', -1));
        withoutSubtitle += radio["subtitle"].isNull();
        EXPECT_EQ(radio["flux_aac"].toString(), station->listenUrl(radio["id"].toString()));
    }
    for (const char *kind : {"mp3", "aac", "m3u", "pls", "xspf"})
        EXPECT_TRUE(kinds.contains(kind)) << kind;
    EXPECT_EQ(withoutSubtitle, 1);
}

TEST(StationApiTest, ListsFrequenciesCityByCity)
{
    const auto station = DemoStation::start(keys);
    const Answer answer = post(station->siteUrl() + "/api/frequences",
                               signedHeaders("station", "cle-de-la-station", "frequences"));
    const QJsonArray cities = QJsonDocument::fromJson(answer.body)["content"].toArray();
    EXPECT_GE(cities.size(), 40);
    QSet<QString> different;
    for (const QJsonValue &city : cities) {
        for (const char *key : {"ville", "region_nom", "frequence"})
            EXPECT_FALSE(city[QLatin1String(key)].toString().isEmpty()) << key;
        different << city["ville"].toString() + city["frequence"].toString();
    }
    EXPECT_EQ(different.size(), cities.size() - 1); // one is there twice
    EXPECT_TRUE(get(station->siteUrl() + "/").body.contains("<title>Orvel Radio</title>"));
}

TEST(StationApiTest, DrawsEveryPictureOfTheListButOne)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "Qt, which is not instrumented, paints gradients on a thread pool of its own";
#endif
    const auto station = DemoStation::start(keys);
    const QJsonDocument list = QJsonDocument::fromJson(webradio(*station).body);
    const QString media = list["media_url"].toString() + '/';
    int missing = 0;
    for (const QJsonValue &radio : list["content"].toArray()) {
        const Answer cover = get(media + radio["file"].toString());
        missing += cover.status == 404;
        EXPECT_EQ(QImage::fromData(cover.body).size(), cover.status == 200 ? QSize(600, 600) : QSize(0, 0));
        const QString logo = media + radio["thumb_smartphone"].toString();
        const Answer first = get(logo);
        EXPECT_EQ(QImage::fromData(first.body).size(), QSize(160, 160));
        EXPECT_EQ(get(logo, {{"If-None-Match", first.etag}}).status, 304);
    }
    EXPECT_EQ(missing, 1);
}

TEST(StationApiTest, PlaylistsNameTheStreamAndHandItsQueryOn)
{
    const auto station = DemoStation::start(keys);
    const struct
    {
        QString id;
        QByteArray line;
    } cases[] = {{"107", "\r\n%\r\n"}, {"109", "\r\nFile1=%\r\n"}, {"105", "<location>%</location>"}};
    for (const auto &test : cases) {
        const QString asked = station->listenUrl(test.id) + "?fault=cut&after=7";
        QByteArray stream = station->streamUrl(test.id).toUtf8() + "?fault=cut&after=7";
        if (test.id == "105")
            stream.replace("&", "&amp;");
        QByteArray line = test.line;
        EXPECT_TRUE(get(asked).body.contains(line.replace("%", stream))) << qPrintable(asked);
    }
    EXPECT_EQ(get(station->siteUrl() + "/ecouter/inconnue.m3u").status, 404);
}

TEST(StationApiTest, TwoStationsDoNotShareAPort)
{
    const auto first = DemoStation::start({});
    DemoStation::Options same;
    same.port = quint16(QUrl(first->siteUrl()).port());
    EXPECT_EQ(DemoStation::start(same), nullptr);
}
