#include "demo/StationContent.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>

namespace orvel::demo {

namespace {

QByteArray contentFile(const char *name)
{
    QFile file(QStringLiteral(":/demo/content/%1").arg(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The demo station was built without its content file %s", name);
    return file.readAll();
}

std::vector<int> numbers(const QJsonValue &text)
{
    std::vector<int> result;
    for (const QString &number : text.toString().split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result.push_back(number.toInt());
    return result;
}

Music musicOf(const QJsonObject &json)
{
    Music music;
    music.tempo = json["tempo"].toDouble();
    music.root = json["root"].toInt();
    for (const QJsonValue &chord : json["chords"].toArray())
        music.chords.push_back(numbers(chord));
    music.lead = json["lead"].toString();
    music.arpeggio = numbers(json["arpeggio"]);
    music.swing = json["swing"].toDouble();
    music.drums = json["drums"].toString();
    music.bass = json["bass"].toString();
    music.pad = json["pad"].toDouble();
    return music;
}

Answer answerOf(const QString &name)
{
    if (name == QLatin1String("icy"))
        return Answer::Icy;
    return name == QLatin1String("offline") ? Answer::Offline : Answer::Http;
}

Programme programmeOf(const QJsonObject &json)
{
    Programme programme;
    programme.stream = json["stream"].toString();
    programme.codec = programme.stream.endsWith(QLatin1String(".aac")) ? Codec::Aac : Codec::Mp3;
    const QString usualType =
        programme.codec == Codec::Aac ? QStringLiteral("audio/aac") : QStringLiteral("audio/mpeg");
    programme.contentType = json["type"].toString(usualType).toUtf8();
    programme.kbps = json["kbps"].toInt();
    programme.genre = json["genre"].toString();
    programme.answer = answerOf(json["answer"].toString());
    programme.music = musicOf(json["music"].toObject());
    const QJsonObject art = json["art"].toObject();
    programme.art.motif = art["motif"].toString();
    for (const QJsonValue &colour : art["colours"].toArray())
        programme.art.colours.append(QColor(colour.toString()));
    for (const QJsonValue &title : json["titles"].toArray())
        programme.titles.append(title.toString());
    return programme;
}

} // namespace

StationContent::StationContent(const QString &siteUrl, const QString &streamsUrl)
    : m_siteUrl(siteUrl)
    , m_streamsUrl(streamsUrl)
    , m_webradio(filled("webradio.json"))
    , m_network(filled("network.json"))
    , m_frequences(contentFile("frequences.json"))
    , m_home(contentFile("index.html"))
{
    for (const QJsonValue &channel : QJsonDocument::fromJson(contentFile("channels.json")).array())
        m_programmes.push_back(programmeOf(channel.toObject()));
    announce(m_webradio);
    announce(m_network);
}

QByteArray StationContent::filled(const char *file) const
{
    return contentFile(file)
        .replace("{{site}}", m_siteUrl.toUtf8())
        .replace("{{streams}}", m_streamsUrl.toUtf8());
}

void StationContent::announce(const QByteArray &list)
{
    for (const QJsonValue &entry : QJsonDocument::fromJson(list)["content"].toArray()) {
        const QString listed = entry["flux_aac"].toString();
        const QString slug = QUrl(listed).fileName().section(QLatin1Char('.'), 0, 0);
        for (Programme &programme : m_programmes) {
            if (programme.slug() == slug) {
                programme.id = entry["id"].toString();
                programme.name = entry["title"].toString();
                programme.listed = listed;
            }
        }
    }
}

QString StationContent::streamUrl(const Programme &programme) const
{
    return m_streamsUrl + QLatin1Char('/') + programme.stream;
}

const Programme *StationContent::byId(const QString &id) const
{
    const auto found = std::ranges::find_if(m_programmes, [&](const Programme &p) { return p.id == id; });
    return found == m_programmes.end() ? nullptr : &*found;
}

const Programme *StationContent::bySlug(const QString &slug) const
{
    const auto found =
        std::ranges::find_if(m_programmes, [&](const Programme &p) { return p.slug() == slug; });
    return found == m_programmes.end() ? nullptr : &*found;
}

} // namespace orvel::demo
