#include "platform/media/parse/ContainerStream.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvel {

namespace {

constexpr qsizetype maxHeldBytes = 32 * 1024 * 1024;
// Less is read sooner than asked for again.
constexpr qint64 leastJump = 64 * 1024;
constexpr double maxTrimmedFrames = 1 << 30;
constexpr double maxFrames = 1LL << 53;

} // namespace

ContainerStream::ContainerStream(AudioFileStreamClient &client, std::unique_ptr<ContainerReader> reader)
    : m_reader(std::move(reader)), m_outlet(*this, client), m_step(m_reader->begin())
{
}

bool ContainerStream::parseBytes(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && m_step.kind != ContainerStep::Kind::Fail) {
        const bool isSound = m_step.kind == ContainerStep::Kind::Sound;
        bytes = bytes.sliced(isSound ? cut(bytes) : readHeaders(bytes));
    }
    return m_step.kind != ContainerStep::Kind::Fail;
}

std::optional<AudioFileStreamSeek> ContainerStream::seek(qint64 packet) const
{
    if (!m_dataOffset)
        return std::nullopt;
    const ContainedSound &sound = m_reader->sound();
    const PacketTable &known = sound.isComplete ? sound.packets : sound.firstPackets;
    if (sound.isComplete || packet < known.packetCount())
        return AudioFileStreamSeek{known.packet(packet).offset - *m_dataOffset, false};
    return m_mean.seek(packet);
}

void ContainerStream::continueAt(qint64 fileOffset)
{
    const qint64 offset = std::clamp<qint64>(fileOffset, 0, ContainerReader::maxFileBytes);
    if (offset == m_position)
        return;
    m_position = offset;
    m_part.clear();
    m_held.clear();
    m_isHolding = false;
    m_hasJumped = true;
    if (m_dataOffset && m_step.kind != ContainerStep::Kind::Fail)
        proceed(m_reader->continueAt(offset));
}

std::optional<qint64> ContainerStream::wantedOffset() const
{
    const bool isReading = m_step.kind == ContainerStep::Kind::Read && m_part.isEmpty();
    // Fragments come one after the other: who went back to the first would meet it again.
    const bool isBeforeSound = m_step.kind == ContainerStep::Kind::Sound && m_reader->sound().isComplete &&
                               m_mean.isEmpty() && m_part.isEmpty();
    if (!isReading && !isBeforeSound)
        return std::nullopt;
    const qint64 wanted = isReading ? m_step.offset : *m_dataOffset;
    const bool isFar = wanted < m_position || wanted - m_position > leastJump;
    return isFar ? std::optional(wanted) : std::nullopt;
}

std::optional<quint64> ContainerStream::audioDataByteCount() const
{
    const ContainedSound &sound = m_reader->sound();
    if (!m_dataOffset || !sound.isComplete || !sound.hasEnd)
        return std::nullopt;
    return quint64(sound.packets.endOffset() - *m_dataOffset);
}

std::optional<quint32> ContainerStream::packetSizeUpperBound() const
{
    if (!m_dataOffset || hasConstantPackets())
        return std::nullopt;
    return std::max(m_reader->sound().maxPacketBytes, packets().maxSize());
}

std::optional<AudioTrim> ContainerStream::trim() const
{
    const ContainedSound &sound = m_reader->sound();
    if (!sound.trim || !m_outlet.isOpen())
        return std::nullopt;
    const auto formats = m_outlet.formatList();
    const double scale = (formats.empty() ? sound.format : formats.front()).sampleRate / sound.trimRate;
    AudioTrim trim;
    trim.primingFrames = quint32(std::min(sound.trim->primingFrames * scale, maxTrimmedFrames));
    if (sound.trim->validFrames)
        trim.validFrames = qint64(std::min(double(*sound.trim->validFrames) * scale, maxFrames));
    return trim;
}

// Returns how many bytes it has taken, as cut() does.
qsizetype ContainerStream::readHeaders(QByteArrayView bytes)
{
    const qint64 before = m_step.offset + m_part.size() - m_position;
    // Bytes that come from behind the headers are of no use.
    const qint64 wanted = before > 0 ? before : before < 0 ? bytes.size() : m_step.size - m_part.size();
    const QByteArrayView taken = bytes.first(qsizetype(std::min<qint64>(wanted, bytes.size())));
    m_position += taken.size();
    if (m_isHolding && !hold(taken)) {
        m_held.clear();
        m_step = ContainerStep::fail();
    } else if (before == 0) {
        m_part.append(taken);
        if (m_part.size() == m_step.size)
            proceed(m_reader->next(std::exchange(m_part, {})));
    }
    return taken.size();
}

bool ContainerStream::hold(QByteArrayView bytes)
{
    if (m_held.size() + bytes.size() > maxHeldBytes)
        return false;
    m_held.append(bytes);
    return true;
}

void ContainerStream::proceed(const ContainerStep &step)
{
    m_step = step;
    if (step.kind == ContainerStep::Kind::Read && step.passesSound && !m_hasJumped)
        m_isHolding = true;
    if (step.kind != ContainerStep::Kind::Sound)
        return;
    m_cursor = packets().packetFrom(m_position - m_held.size());
    if (!m_dataOffset)
        m_dataOffset = packets().begin().offset;
    if (!m_outlet.isOpen())
        m_outlet.open(m_reader->sound().format, m_reader->sound().cookie);
    if (m_isHolding)
        cutHeld();
}

void ContainerStream::cutHeld()
{
    m_isHolding = false;
    const QByteArray held = std::exchange(m_held, {});
    m_position -= held.size();
    parseBytes(held);
}

qsizetype ContainerStream::cut(QByteArrayView bytes)
{
    if (isSoundOver()) {
        const qsizetype rest = qsizetype(std::min<qint64>(m_step.offset - m_position, bytes.size()));
        m_position += rest;
        if (m_position == m_step.offset)
            proceed(m_reader->next({}));
        return rest;
    }
    if (!m_part.isEmpty())
        return completePacket(bytes);
    const qsizetype taken = hasConstantPackets() ? takeConstant(bytes) : takeVarying(bytes);
    m_position += taken;
    return taken;
}

bool ContainerStream::isSoundOver() const
{
    return packets().isEnd(m_cursor) || m_cursor.offset + packets().sizeOf(m_cursor.packet) > m_step.offset;
}

qsizetype ContainerStream::takeVarying(QByteArrayView bytes)
{
    m_found.clear();
    qsizetype end = 0;
    while (!isSoundOver()) {
        const quint32 size = packets().sizeOf(m_cursor.packet);
        const qint64 start = m_cursor.offset - m_position;
        if (start + size > bytes.size())
            break;
        if (size > 0)
            m_found.push_back({.startOffset = start, .dataByteSize = size});
        m_mean.add(1, size);
        end = qsizetype(start + size);
        packets().advance(m_cursor);
    }
    m_outlet.take(bytes.first(end), m_found);
    if (isSoundOver())
        return end;
    // What is left is in front of a packet, or its beginning.
    const qint64 start = std::min<qint64>(m_cursor.offset - m_position, bytes.size());
    m_part.append(bytes.sliced(qsizetype(start)));
    return bytes.size();
}

qsizetype ContainerStream::takeConstant(QByteArrayView bytes)
{
    const quint32 size = packets().sizeOf(m_cursor.packet);
    const qint64 start = m_cursor.offset - m_position;
    if (start >= bytes.size())
        return bytes.size();
    const QByteArrayView sound = bytes.sliced(qsizetype(start));
    const qint64 count = std::min<qint64>(sound.size() / size, packets().leftInRun(m_cursor));
    if (count == 0) {
        m_part.append(sound);
        return bytes.size();
    }
    packets().advance(m_cursor, count);
    m_mean.add(count, count * size);
    m_outlet.take(sound.first(qsizetype(count) * size), quint32(count));
    return qsizetype(start + count * size);
}

qsizetype ContainerStream::completePacket(QByteArrayView bytes)
{
    const quint32 size = packets().sizeOf(m_cursor.packet);
    const QByteArrayView taken = bytes.first(std::min<qsizetype>(size - m_part.size(), bytes.size()));
    m_part.append(taken);
    m_position += taken.size();
    if (m_part.size() < qsizetype(size))
        return taken.size();
    packets().advance(m_cursor);
    m_mean.add(1, size);
    const QByteArray packet = std::exchange(m_part, {});
    if (hasConstantPackets())
        m_outlet.take(packet, 1);
    else
        m_outlet.take(packet, std::array{AudioStreamPacketDescription{.dataByteSize = size}});
    return taken.size();
}

} // namespace orvel
