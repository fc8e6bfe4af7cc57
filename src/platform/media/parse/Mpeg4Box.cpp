#include "platform/media/parse/Mpeg4Box.h"

namespace orvel {

std::optional<Mpeg4Box> takeMpeg4Box(QByteArrayView &boxes)
{
    constexpr qsizetype headerBytes = 8;
    if (boxes.size() < headerBytes)
        return std::nullopt;
    ByteReader reader(boxes);
    quint64 size = reader.u32();
    const quint32 type = reader.code();
    quint64 headerSize = headerBytes;
    if (size == 1) {
        size = reader.u64();
        headerSize += 8;
    } else if (size == 0) {
        size = quint64(boxes.size());
    }
    if (size < headerSize || size > quint64(boxes.size()))
        return std::nullopt;
    boxes = boxes.sliced(qsizetype(size));
    return Mpeg4Box{type, reader.take(size - headerSize)};
}

QByteArrayView findMpeg4Box(QByteArrayView boxes, std::initializer_list<quint32> path)
{
    for (const quint32 type : path) {
        std::optional<Mpeg4Box> box;
        do
            box = takeMpeg4Box(boxes);
        while (box && box->type != type);
        if (!box)
            return {};
        boxes = box->body;
    }
    return boxes;
}

} // namespace orvel
