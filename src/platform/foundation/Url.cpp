#include "platform/foundation/Url.h"

#include <QFileInfo>
#include <QUrl>

namespace orvel {

std::optional<Url> Url::fromText(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool hasSpace = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    if (hasSpace || text.isEmpty() || !url.isValid() || url.scheme().isEmpty())
        return std::nullopt;
    return Url(text);
}

QString Url::scheme() const { return m_text.left(m_text.indexOf(u':')); }

QString Url::pathExtension() const { return QFileInfo(QUrl(m_text, QUrl::StrictMode).path()).suffix(); }

QByteArray Url::encoded() const { return QUrl(m_text, QUrl::StrictMode).toEncoded(QUrl::RemoveFragment); }

} // namespace orvel
