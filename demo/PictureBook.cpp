#include "demo/PictureBook.h"

#include "demo/CoverArt.h"
#include "demo/LogoArt.h"

#include <QBuffer>

namespace orvel::demo {

namespace {

constexpr int oneDay = 24 * 60 * 60;

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format, 90);
    return bytes;
}

} // namespace

PictureBook::PictureBook(const std::vector<Programme> &programmes) : m_programmes(programmes) {}

std::optional<WebAnswer> PictureBook::answer(const WebRequest &request)
{
    static const QString prefix = QStringLiteral("/media/");
    if (request.post || !request.path.startsWith(prefix))
        return {};
    const QString name = request.path.mid(prefix.size());
    const QByteArray bytes = picture(name);
    if (bytes.isEmpty())
        return {};
    const bool png = name.endsWith(QLatin1String(".png"));
    return WebAnswer{200, png ? "image/png" : "image/jpeg", bytes, oneDay};
}

QByteArray PictureBook::picture(const QString &name)
{
    const std::scoped_lock lock(m_mutex);
    const auto known = m_drawn.constFind(name);
    if (known != m_drawn.constEnd())
        return *known;
    for (const Programme &programme : m_programmes) {
        if (name == programme.slug() + QLatin1String(".jpg"))
            return *m_drawn.insert(name, encoded(drawCover(programme.art), "JPG"));
        if (name == programme.slug() + QLatin1String("-logo.png"))
            return *m_drawn.insert(name, encoded(drawLogo(programme.art), "PNG"));
    }
    return {};
}

} // namespace orvel::demo
