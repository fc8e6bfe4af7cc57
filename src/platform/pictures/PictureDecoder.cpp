#include "platform/pictures/PictureDecoder.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/pictures/PictureScale.h"

#include <QBuffer>
#include <QImageReader>
#include <mutex>
#include <utility>

namespace orvel {

namespace {

// Vector formats stay out: a picture from the network is pixels, not a program that draws.
bool isShownHere(const QByteArray &format)
{
    return QByteArrayList{"png", "jpeg", "gif", "bmp", "webp"}.contains(format);
}

QImage decoded(const QByteArray &bytes)
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
    const QSize size = decodedPictureSize(reader.size());
    if (size.isEmpty())
        return {};
    if (size != reader.size())
        reader.setScaledSize(size);
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

bool looksLikePicture(QByteArrayView head)
{
    QBuffer buffer;
    buffer.setData(head.toByteArray());
    buffer.open(QIODevice::ReadOnly);
    return isShownHere(QImageReader::imageFormat(&buffer));
}

void decodePicture(const QByteArray &bytes, std::function<void(const QImage &picture)> then)
{
    static SerialQueue pictures(QStringLiteral("pictures"));
    // `then` is moved on, so that what it holds is never released on the queue's thread.
    pictures.async([bytes, then = std::move(then)]() mutable {
        MainQueue::async([then = std::move(then), picture = decoded(bytes)] { then(picture); });
    });
}

} // namespace orvel
