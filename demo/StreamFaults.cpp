#include "demo/StreamFaults.h"

#include <QHash>

#include <algorithm>

namespace orvel::demo {

StreamFaults StreamFaults::of(const QUrlQuery &query)
{
    static const QHash<QString, Kind> kinds = {
        {QStringLiteral("stall"), Kind::Stall},     {QStringLiteral("cut"), Kind::Cut},
        {QStringLiteral("reset"), Kind::Reset},     {QStringLiteral("slow"), Kind::Slow},
        {QStringLiteral("garbage"), Kind::Garbage}, {QStringLiteral("html"), Kind::Html},
        {QStringLiteral("header"), Kind::Header},
    };
    const auto text = [&](const char *name) {
        return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
    };
    const auto asked = [&](const char *name) { return query.hasQueryItem(QLatin1String(name)); };

    StreamFaults faults;
    faults.kind = kinds.value(text("fault"), Kind::None);
    faults.after = std::max(0LL, text("after").toLongLong());
    if (asked("status"))
        faults.status = std::clamp(text("status").toInt(), 100, 999);
    if (asked("icy"))
        faults.bareIcy = text("icy") != QLatin1String("0");
    if (asked("type"))
        faults.contentType = text("type").toUtf8();
    if (asked("metaint"))
        faults.metadataInterval = text("metaint").toUtf8();
    if (asked("burst"))
        faults.burst = std::max(0LL, text("burst").toLongLong());
    if (asked("seconds"))
        faults.seconds = text("seconds").toDouble();
    if (asked("paced"))
        faults.paced = text("paced") != QLatin1String("0");
    faults.piece = std::max(0LL, text("piece").toLongLong());
    return faults;
}

} // namespace orvel::demo
