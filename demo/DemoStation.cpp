#include "demo/DemoStation.h"

#include "demo/Accounts.h"
#include "demo/PictureBook.h"
#include "demo/Playlists.h"
#include "demo/SoundBook.h"
#include "demo/StationApi.h"
#include "demo/StreamServer.h"

#include <QLoggingCategory>

#include <thread>
#include <utility>

namespace orvel {

using namespace demo;

namespace {

Q_LOGGING_CATEGORY(logDemo, "orvel.demo")

QByteArray keyOr(const QByteArray &given, const char *configured)
{
    return given.isEmpty() ? QByteArray(configured) : given;
}

quint16 portAfter(quint16 first, int offset) { return first == 0 ? quint16(0) : quint16(first + offset); }

QString address(quint16 port) { return QStringLiteral("http://127.0.0.1:%1").arg(port); }

} // namespace

struct DemoStation::Parts
{
    Parts(const Options &options, std::unique_ptr<WebServer> siteServer,
          std::unique_ptr<StreamServer> streamServer, std::unique_ptr<WebServer> networkServer)
        : content(address(siteServer->port()), address(streamServer->port()))
        , pictures(content.programmes())
        , sounds(content.programmes())
        , api({keyOr(options.stationSigningKey, ORVEL_STATION_SIGNING_KEY),
               keyOr(options.stationPublicKey, ORVEL_STATION_PUBLIC_KEY)},
              {{"webradio", content.webradio()}, {"frequences", content.frequences()}}, &accounts)
        , networkApi({keyOr(options.networkSigningKey, ORVEL_NETWORK_SIGNING_KEY),
                      keyOr(options.networkPublicKey, ORVEL_NETWORK_PUBLIC_KEY)},
                     {{"webradio", content.network()}}, nullptr)
        , streams(std::move(streamServer))
        , network(std::move(networkServer))
        , site(std::move(siteServer))
    {
    }

    WebAnswer siteAnswer(const WebRequest &request)
    {
        if (const auto answer = api.answer(request))
            return *answer;
        if (const auto answer = pictures.answer(request))
            return *answer;
        if (const auto answer = sounds.answer(request))
            return *answer;
        if (const auto answer = playlistAnswer(content, request))
            return *answer;
        if (!request.post && request.path == QLatin1String("/"))
            return {200, "text/html; charset=utf-8", content.home()};
        return missing();
    }

    static WebAnswer missing() { return {404, "text/plain; charset=utf-8", "Cette page n'existe pas.\n"}; }

    StationContent content;
    PictureBook pictures;
    SoundBook sounds;
    Accounts accounts;
    StationApi api;
    StationApi networkApi;
    // Destroyed first: they use all of the above.
    std::unique_ptr<StreamServer> streams;
    std::unique_ptr<WebServer> network;
    std::unique_ptr<WebServer> site;
};

std::unique_ptr<DemoStation> DemoStation::start(const Options &options)
{
    auto site = WebServer::listen(options.port);
    auto streams = StreamServer::listen(portAfter(options.port, 1));
    auto network = WebServer::listen(portAfter(options.port, 2));
    if (!site || !streams || !network) {
        qCWarning(logDemo, "A port of the demo station is taken (%d to %d)", options.port, options.port + 2);
        return nullptr;
    }
    auto parts = std::make_unique<Parts>(options, std::move(site), std::move(streams), std::move(network));
    Parts &p = *parts;
    p.streams->start(p.content, {options.burstBytes, options.paced});
    p.network->start(
        [&p](const WebRequest &request) { return p.networkApi.answer(request).value_or(Parts::missing()); });
    p.site->start([&p, delay = options.delay](const WebRequest &request) {
        if (request.post)
            std::this_thread::sleep_for(delay);
        return p.siteAnswer(request);
    });
    return std::unique_ptr<DemoStation>(new DemoStation(std::move(parts)));
}

DemoStation::DemoStation(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

DemoStation::~DemoStation() = default;

QString DemoStation::siteUrl() const { return m_parts->content.siteUrl(); }

QString DemoStation::networkWebradioUrl() const
{
    return address(m_parts->network->port()) + QStringLiteral("/api/webradio");
}

QStringList DemoStation::radioIds() const
{
    QStringList ids;
    for (const Programme &programme : m_parts->content.programmes())
        ids.append(programme.id);
    return ids;
}

QString DemoStation::radioName(const QString &id) const
{
    const Programme *programme = m_parts->content.byId(id);
    return programme ? programme->name : QString();
}

QString DemoStation::listenUrl(const QString &id) const
{
    const Programme *programme = m_parts->content.byId(id);
    return programme ? programme->listed : QString();
}

QString DemoStation::streamUrl(const QString &id) const
{
    const Programme *programme = m_parts->content.byId(id);
    return programme ? m_parts->content.streamUrl(*programme) : QString();
}

} // namespace orvel
