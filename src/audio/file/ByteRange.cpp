#include "audio/file/ByteRange.h"

namespace orvel {

namespace {

constexpr int partialContent = 206;

} // namespace

QString rangeField(qint64 first, qint64 fileLength)
{
    return QStringLiteral("bytes=%1-").arg(first) +
           (fileLength > 0 ? QString::number(fileLength) : QString());
}

qint64 firstByteOf(const UrlResponse &response, qint64 asked)
{
    if (response.statusCode != partialContent)
        return 0;
    // "bytes 5-9/10"
    const QString range = response.headers.value(QStringLiteral("Content-Range")).value_or(QString());
    bool isNumber = false;
    const qint64 first = range.section(u' ', 1).section(u'-', 0, 0).toLongLong(&isNumber);
    return isNumber ? first : asked;
}

bool takesRanges(const UrlResponse &response)
{
    return response.statusCode == partialContent ||
           response.headers.value(QStringLiteral("Accept-Ranges")) == QStringLiteral("bytes");
}

} // namespace orvel
