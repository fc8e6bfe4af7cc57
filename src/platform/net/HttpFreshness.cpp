#include "platform/net/HttpFreshness.h"

#include "platform/foundation/ByteText.h"

#include <QDateTime>
#include <algorithm>

namespace orvel {

namespace {

constexpr double aYear = 365 * 86400.0;
constexpr double aDay = 86400;

std::optional<double> httpDate(const std::optional<QString> &text)
{
    const QString zoned = text.value_or(QString()).replace(QStringLiteral("GMT"), QStringLiteral("+0000"));
    const QDateTime date = QDateTime::fromString(zoned, Qt::RFC2822Date);
    return date.isValid() ? std::optional(double(date.toSecsSinceEpoch())) : std::nullopt;
}

// Returns the directive's argument, an empty text when it has none, std::nullopt without the directive.
std::optional<QString> directive(const HeaderFields &fields, const QString &name)
{
    const QStringList directives =
        fields.value(QStringLiteral("Cache-Control")).value_or(QString()).split(u',');
    for (const QString &one : directives) {
        if (equalsIgnoringCase(one.section(u'=', 0, 0).trimmed(), name))
            return one.section(u'=', 1).remove(u'"');
    }
    return std::nullopt;
}

double lifetime(const HeaderFields &fields, double now)
{
    if (directive(fields, QStringLiteral("no-cache")))
        return 0;
    if (const std::optional<QString> maxAge = directive(fields, QStringLiteral("max-age")))
        return double(integerValue(*maxAge));
    const double date = httpDate(fields.value(QStringLiteral("Date"))).value_or(now);
    if (const std::optional<QString> expires = fields.value(QStringLiteral("Expires")))
        return httpDate(expires).value_or(date) - date;
    // The usual guess for an answer that names no time: what has long not changed will not change soon.
    const double modified = httpDate(fields.value(QStringLiteral("Last-Modified"))).value_or(date);
    return std::min((date - modified) / 10, aDay);
}

} // namespace

HttpFreshness httpFreshness(const HeaderFields &fields, double now)
{
    const bool varies = fields.value(QStringLiteral("Vary")).value_or(QString()).contains(u'*');
    if (varies || directive(fields, QStringLiteral("no-store")))
        return {};
    const double age = double(integerValue(fields.value(QStringLiteral("Age")).value_or(QString())));
    return {true, std::clamp(lifetime(fields, now) - std::max(0.0, age), 0.0, aYear)};
}

} // namespace orvel
