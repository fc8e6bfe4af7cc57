#pragma once

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

namespace orvel::demo {

enum class Codec { Mp3, Aac };

// How a stream answers its listener: as an HTTP server, with a bare "ICY 200 OK" header, or not at all (503).
enum class Answer { Http, Icy, Offline };

// A radio's style of music. Notes are MIDI numbers, chords are semitones above the root.
struct Music
{
    double tempo = 100; // beats a minute
    int root = 48;
    std::vector<std::vector<int>> chords; // one a bar
    QString lead;
    std::vector<int> arpeggio; // one bar of steps, each the index of a chord's note
    double swing = 0;          // how far every second eighth is late, as a part of an eighth
    QString drums;
    QString bass;
    double pad = 0; // level of the held chords
};

struct Art
{
    QString motif;
    QList<QColor> colours; // from the darkest to the lightest
};

// One live stream: what it plays and how it is announced.
struct Programme
{
    QString id;
    QString stream; // file name in the stream's URL
    QString name;   // the radio's name in the list
    QString listed; // the URL the list announces: the stream's, or a playlist's
    Codec codec = Codec::Mp3;
    QByteArray contentType;
    int kbps = 128;
    QString genre;
    Answer answer = Answer::Http;
    Music music;
    Art art;
    QStringList titles;

    QString slug() const { return stream.section(QLatin1Char('.'), 0, 0); }
};

// The station's content files, compiled in, with the addresses of this run filled in.
class StationContent
{
public:
    StationContent(const QString &siteUrl, const QString &streamsUrl);

    const QByteArray &webradio() const { return m_webradio; }
    const QByteArray &network() const { return m_network; }
    const QByteArray &frequences() const { return m_frequences; }
    // The site's home page.
    const QByteArray &home() const { return m_home; }
    const std::vector<Programme> &programmes() const { return m_programmes; }

    const QString &siteUrl() const { return m_siteUrl; }
    QString streamUrl(const Programme &programme) const;
    // nullptr when there is none.
    const Programme *byId(const QString &id) const;
    const Programme *bySlug(const QString &slug) const;

private:
    QByteArray filled(const char *file) const;
    void announce(const QByteArray &list);

    QString m_siteUrl;
    QString m_streamsUrl;
    QByteArray m_webradio;
    QByteArray m_network;
    QByteArray m_frequences;
    QByteArray m_home;
    std::vector<Programme> m_programmes;
};

} // namespace orvel::demo
