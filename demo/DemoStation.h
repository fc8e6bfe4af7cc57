#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace orvel {

// A small real station on 127.0.0.1: signed API, pictures, playlists and live streams. It runs on threads of
// its own and needs no event loop. What can be asked for in a stream's URL is in demo/README.md.
class DemoStation
{
public:
    struct Options
    {
        quint16 port = 0; // of the site; the streams take the next one, the network's API the one after. 0:
                          // any free ones
        qsizetype burstBytes = 196608; // what a listener gets at once
        bool paced = true; // false: streams go out as fast as they are taken, each encoded for itself
        std::chrono::milliseconds delay{0}; // before the site's API answers, as from afar
        // Empty: the keys this program was configured with.
        QByteArray stationSigningKey;
        QByteArray stationPublicKey;
        QByteArray networkSigningKey;
        QByteArray networkPublicKey;
    };

    // Returns nullptr when a port is taken, which is logged.
    static std::unique_ptr<DemoStation> start(const Options &options);
    // Ends every listener's stream and all threads.
    ~DemoStation();
    DemoStation(const DemoStation &) = delete;
    DemoStation &operator=(const DemoStation &) = delete;

    QString siteUrl() const; // without a trailing slash
    QString networkWebradioUrl() const;
    QStringList radioIds() const; // in the order of the list, the network's after the station's
    QString radioName(const QString &id) const;
    QString listenUrl(const QString &id) const; // as the list announces it: of the stream or of a playlist
    QString streamUrl(const QString &id) const; // of the stream itself, also of a radio behind a playlist

private:
    struct Parts;
    explicit DemoStation(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace orvel
