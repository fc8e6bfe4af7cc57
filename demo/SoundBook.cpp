#include "demo/SoundBook.h"

#include "demo/SoundFile.h"

#include <algorithm>

namespace orvel::demo {

namespace {

const QHash<QString, QByteArray> types{{QStringLiteral("mp3"), "audio/mpeg"},
                                       {QStringLiteral("aac"), "audio/aac"},
                                       {QStringLiteral("m4a"), "audio/mp4"},
                                       {QStringLiteral("wav"), "audio/wav"},
                                       {QStringLiteral("aiff"), "audio/aiff"}};

} // namespace

std::optional<WebAnswer> SoundBook::answer(const WebRequest &request)
{
    const QLatin1String folder("/sons/");
    if (request.post || !request.path.startsWith(folder))
        return std::nullopt;
    const QString name = request.path.mid(folder.size());
    const QString type = name.section(u'.', 1);
    const auto programme = std::ranges::find(m_programmes, name.section(u'.', 0, 0), &Programme::slug);
    if (programme == m_programmes.end() || !types.contains(type))
        return std::nullopt;
    const std::lock_guard lock(m_mutex);
    QByteArray &sound = m_made[name];
    if (sound.isEmpty())
        sound = soundFile(*programme, type);
    return WebAnswer{.status = 200, .type = types.value(type), .body = sound, .takesRanges = true};
}

} // namespace orvel::demo
