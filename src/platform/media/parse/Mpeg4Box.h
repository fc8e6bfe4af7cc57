#pragma once

#include "platform/media/parse/ByteReader.h"

#include <initializer_list>
#include <optional>

namespace orvel {

// One of the boxes that an MPEG-4 file consists of (ISO/IEC 14496-12).
struct Mpeg4Box
{
    quint32 type = 0;
    QByteArrayView body;
};

// Takes the box at the front of `boxes`. nullopt at their end, or when it does not fit into them.
std::optional<Mpeg4Box> takeMpeg4Box(QByteArrayView &boxes);

// Returns the body of the first box on this path; empty when there is none.
QByteArrayView findMpeg4Box(QByteArrayView boxes, std::initializer_list<quint32> path);

// Reads the version and the flags that many bodies begin with.
struct Mpeg4BoxVersion
{
    explicit Mpeg4BoxVersion(ByteReader &reader) : version(reader.u8())
    {
        flags = quint32(reader.u8()) << 16;
        flags |= reader.u16();
    }
    quint8 version;
    quint32 flags;
};

} // namespace orvel
