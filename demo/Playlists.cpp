#include "demo/Playlists.h"

namespace orvel::demo {

namespace {

QString m3u(const QString &name, const QString &url)
{
    return QStringLiteral("#EXTM3U\r\n#EXTINF:-1,%1\r\n%2\r\n").arg(name, url);
}

QString pls(const QString &name, const QString &url)
{
    return QStringLiteral(
               "[playlist]\r\nNumberOfEntries=1\r\nFile1=%2\r\nTitle1=%1\r\nLength1=-1\r\nVersion=2\r\n")
        .arg(name, url);
}

QString xspf(const QString &name, const QString &url)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\">\n"
                          "  <title>%1</title>\n  <trackList>\n    <track>\n"
                          "      <location>%2</location>\n      <title>%1</title>\n"
                          "    </track>\n  </trackList>\n</playlist>\n")
        .arg(name.toHtmlEscaped(), url.toHtmlEscaped());
}

struct Form
{
    const char *extension;
    const char *type;
    QString (*write)(const QString &name, const QString &url);
};

constexpr Form forms[] = {
    {"m3u", "audio/x-mpegurl", m3u},
    {"pls", "audio/x-scpls", pls},
    {"xspf", "application/xspf+xml", xspf},
};

} // namespace

std::optional<WebAnswer> playlistAnswer(const StationContent &content, const WebRequest &request)
{
    static const QString prefix = QStringLiteral("/ecouter/");
    if (!request.path.startsWith(prefix))
        return {};
    const QString file = request.path.mid(prefix.size());
    const Programme *programme = content.bySlug(file.section(QLatin1Char('.'), 0, 0));
    if (!programme)
        return {};
    QString url = content.streamUrl(*programme);
    if (!request.query.isEmpty())
        url += QLatin1Char('?') + QString::fromUtf8(request.query);
    for (const Form &form : forms) {
        if (file.section(QLatin1Char('.'), 1) == QLatin1String(form.extension))
            return WebAnswer{200, form.type, form.write(programme->name, url).toUtf8()};
    }
    return {};
}

} // namespace orvel::demo
