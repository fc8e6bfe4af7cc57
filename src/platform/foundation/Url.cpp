#include "platform/foundation/Url.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

namespace orvel {

namespace {

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

// All else that would need it makes no URL.
QByteArray escapedBeyondAscii(const QString &text)
{
    QByteArray escaped;
    for (const char c : text.toUtf8())
        escaped += uchar(c) < 0x80 ? QByteArray(1, c) : '%' + QByteArray(1, c).toHex().toUpper();
    return escaped;
}

} // namespace

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

QByteArray Url::encoded() const
{
    static const QRegularExpression authority(QStringLiteral("^[^/?#]+://([^/?#]*)"));
    QString sent = m_text.section(u'#', 0, 0);
    const QRegularExpressionMatch typed = authority.match(sent);
    if (!isAscii(typed.capturedView(1)))
        sent.replace(typed.capturedStart(1), typed.capturedLength(1),
                     QUrl(m_text, QUrl::StrictMode).authority(QUrl::FullyEncoded));
    return escapedBeyondAscii(sent);
}

} // namespace orvel
