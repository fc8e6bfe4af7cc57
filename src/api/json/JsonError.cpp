#include "api/json/JsonError.h"

#include <QStringList>

namespace orvel {

JsonError::JsonError(int errorCode, const QString &description, std::shared_ptr<const JsonError> previous)
    : code(errorCode), localizedDescription(description), underlying(std::move(previous))
{
}

JsonError::~JsonError()
{
    auto next = std::move(underlying);
    while (next && next.use_count() == 1) {
        // Held on its own first, so that freeing `next` ends there.
        auto deeper = next->underlying;
        next = std::move(deeper);
    }
}

QString JsonError::text() const
{
    return QStringLiteral("Error Domain=%1 Code=%2 \"%3\"")
        .arg(domain, QString::number(code), localizedDescription);
}

QString formatTrace(const JsonErrorTrace &trace)
{
    QStringList lines;
    for (const auto &error : trace)
        lines.append(error->text());
    return QStringLiteral("(\n    %1\n)").arg(lines.join(QStringLiteral(",\n    ")));
}

} // namespace orvel
