#include "platform/media/parse/Mpeg4Reader.h"

#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/Mpeg4Fragment.h"

#include <limits>
#include <utility>

namespace orvel {

namespace {

constexpr qint64 maxFragmentBytes = 1024 * 1024; // of its index
constexpr qint64 noEnd = std::numeric_limits<qint64>::max();

// How a fragment begins, behind its size.
constexpr QByteArrayView fragmentMark("moof\0\0\0\x10mfhd", 12);
constexpr qsizetype fragmentStartBytes = 4 + 12;

} // namespace

ContainerStep Mpeg4Reader::next(QByteArrayView headers)
{
    ByteReader reader(headers);
    switch (m_part) {
    case Part::Header: {
        const quint32 size = reader.u32();
        m_box.type = reader.code();
        m_box.bodyOffset = m_box.offset + headerBytes;
        if (size != 1)
            return enterBox(size);
        m_part = Part::LongSize;
        return ContainerStep::read(m_box.bodyOffset, 8);
    }
    case Part::LongSize: {
        m_box.bodyOffset += 8;
        const quint64 size = reader.u64();
        return size == 0 ? ContainerStep::fail() : enterBox(size);
    }
    case Part::Movie:
        return takeMovie(headers);
    case Part::Fragment:
        return takeFragment(headers);
    case Part::Sound:
        return boxBehind();
    case Part::Search:
        return search(headers.front());
    }
    return ContainerStep::fail();
}

ContainerStep Mpeg4Reader::continueAt(qint64 offset)
{
    if (m_sound.isComplete)
        return ContainerStep::sound();
    if (m_part == Part::Sound && isWithin(m_box, offset))
        return enterSound();
    if (m_firstSound && isWithin(*m_firstSound, offset)) {
        m_box = *m_firstSound;
        m_sound.packets = m_sound.firstPackets;
        return enterSound();
    }
    m_part = Part::Search;
    m_seen.clear();
    m_searchOffset = offset;
    return ContainerStep::read(offset, 1);
}

ContainerStep Mpeg4Reader::enterBox(quint64 size)
{
    m_box.end.reset();
    if (size != 0) {
        const auto headerSize = quint64(m_box.bodyOffset - m_box.offset);
        if (size < headerSize || size > quint64(maxFileBytes - m_box.offset))
            return ContainerStep::fail();
        m_box.end = m_box.offset + qint64(size);
    }
    switch (m_box.type) {
    case fourCharacterCode("moov"):
        return m_movie ? boxBehind() : readBody(Part::Movie);
    case fourCharacterCode("moof"):
        return m_movie ? readBody(Part::Fragment) : boxBehind();
    case fourCharacterCode("mdat"):
        if (m_movie && m_sound.packets.packetCount() > 0)
            return enterSound();
        m_hasPassedSound = m_hasPassedSound || !m_movie;
        return boxBehind();
    default:
        return boxBehind();
    }
}

ContainerStep Mpeg4Reader::enterSound()
{
    if (!m_firstSound) {
        m_firstSound = m_box;
        m_sound.firstPackets = m_sound.packets;
    }
    m_part = Part::Sound;
    return ContainerStep::sound(m_box.end.value_or(noEnd));
}

bool Mpeg4Reader::isWithin(const Box &box, qint64 offset)
{
    return offset >= box.bodyOffset && offset <= box.end.value_or(noEnd);
}

ContainerStep Mpeg4Reader::readBody(Part part)
{
    const qint64 size = m_box.end.value_or(noEnd) - m_box.bodyOffset;
    if (size == 0 || size > (part == Part::Movie ? maxIndexBytes : maxFragmentBytes))
        return ContainerStep::fail();
    m_part = part;
    return ContainerStep::read(m_box.bodyOffset, size);
}

ContainerStep Mpeg4Reader::boxBehind()
{
    if (!m_box.end)
        return ContainerStep::fail();
    m_part = Part::Header;
    m_box.offset = *m_box.end;
    return m_hasPassedSound ? ContainerStep::readBehindSound(m_box.offset, headerBytes)
                            : ContainerStep::read(m_box.offset, headerBytes);
}

ContainerStep Mpeg4Reader::takeMovie(QByteArrayView body)
{
    m_movie = readMpeg4Movie(body);
    if (!m_movie)
        return ContainerStep::fail();
    m_sound = std::exchange(m_movie->sound, {});
    if (m_movie->isFragmented)
        return m_hasPassedSound ? ContainerStep::fail() : boxBehind();
    return m_sound.packets.packetCount() > 0 ? ContainerStep::sound() : ContainerStep::fail();
}

ContainerStep Mpeg4Reader::takeFragment(QByteArrayView body)
{
    auto packets = readMpeg4Fragment(body, m_box.offset, *m_movie);
    if (!packets)
        return ContainerStep::fail();
    m_sound.packets = std::move(*packets);
    return boxBehind();
}

// Looks byte by byte for the beginning of a fragment.
ContainerStep Mpeg4Reader::search(char byte)
{
    m_seen.append(byte);
    ++m_searchOffset;
    if (m_seen.size() > fragmentStartBytes)
        m_seen.remove(0, 1);
    if (!m_seen.endsWith(fragmentMark))
        return ContainerStep::read(m_searchOffset, 1);
    // What follows is the rest of the box, which is read as if it were all of its body.
    const quint32 size = ByteReader(m_seen).u32();
    const qint64 start = m_searchOffset - fragmentStartBytes;
    constexpr qint64 mfhdBytes = 8; // behind its header
    m_box = {fourCharacterCode("moof"), start, m_searchOffset + mfhdBytes, start + qint64(size)};
    m_seen.clear();
    if (*m_box.end <= m_box.bodyOffset)
        return ContainerStep::read(m_searchOffset, 1);
    return readBody(Part::Fragment);
}

} // namespace orvel
