#include "platform/pictures/PictureDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <mutex>

namespace orvel {

namespace {

constexpr int longestSide = 2048;

// Vector formats stay out: a picture from the network is pixels, not a program that draws.
bool isShownHere(const QByteArray &format)
{
    return QByteArrayList{"png", "jpeg", "gif", "bmp", "webp"}.contains(format);
}

} // namespace

bool looksLikePicture(QByteArrayView head)
{
    QBuffer buffer;
    buffer.setData(head.toByteArray());
    buffer.open(QIODevice::ReadOnly);
    return isShownHere(QImageReader::imageFormat(&buffer));
}

QImage decodePicture(const QByteArray &bytes)
{
    static std::once_flag limited;
    std::call_once(limited, [] { QImageReader::setAllocationLimit(64); }); // MiB: four bytes a pixel

    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    if (!isShownHere(reader.format()))
        return {};
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > maximumPicturePixels)
        return {};
    if (std::max(size.width(), size.height()) > longestSide) {
        const QSize scaled = size.scaled(longestSide, longestSide, Qt::KeepAspectRatio);
        reader.setScaledSize(scaled.expandedTo(QSize(1, 1)));
    }
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace orvel
