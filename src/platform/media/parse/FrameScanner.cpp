#include "platform/media/parse/FrameScanner.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr qsizetype id3HeaderBytes = 10;
constexpr qint64 id3v1Bytes = 128;

// The size of the ID3v2 tag (header, body, footer) whose ten header bytes are given; 0 when they are none.
qint64 id3v2Size(QByteArrayView header)
{
    const auto byte = [header](qsizetype i) { return quint8(header[i]); };
    if (byte(3) == 0xFF || byte(4) == 0xFF)
        return 0;
    qint64 body = 0;
    for (qsizetype i = 6; i < id3HeaderBytes; ++i) {
        if (byte(i) & 0x80)
            return 0;
        body = body << 7 | byte(i);
    }
    const bool footer = byte(5) & 0x10;
    return id3HeaderBytes + body + (footer ? id3HeaderBytes : 0);
}

} // namespace

qsizetype FrameScanner::scan(QByteArrayView bytes, std::vector<AudioStreamPacketDescription> &frames)
{
    qsizetype at = 0;
    Step step = Step::Further;
    while (step == Step::Further) {
        const qint64 skipped = std::min<qint64>(m_skip, bytes.size() - at);
        at += skipped;
        m_skip -= skipped;
        if (m_skip > 0)
            break;
        if (m_state == State::InStep)
            step = takeFrame(bytes, at, frames);
        else if (m_state == State::AtStart)
            step = passTag(bytes.sliced(at));
        else
            step = search(bytes, at);
    }
    return at;
}

FrameScanner::Step FrameScanner::takeFrame(QByteArrayView bytes, qsizetype &at,
                                           std::vector<AudioStreamPacketDescription> &frames)
{
    while (true) {
        const QByteArrayView rest = bytes.sliced(at);
        if (rest.size() < audioFrameHeaderBytes)
            return Step::NeedsMore;
        const auto header = readAudioFrameHeader(rest);
        if (!header || header->key != m_key)
            return passTag(rest);
        if (rest.size() < qsizetype(header->size))
            return Step::NeedsMore;
        const bool usual = header->framesPerPacket == m_first->framesPerPacket;
        frames.push_back({.startOffset = at,
                          .variableFramesInPacket = usual ? 0 : header->framesPerPacket,
                          .dataByteSize = header->size});
        at += qsizetype(header->size);
    }
}

FrameScanner::Step FrameScanner::passTag(QByteArrayView rest)
{
    const QByteArrayView mark = rest.first(std::min<qsizetype>(rest.size(), 3));
    const bool mayBeId3v2 = QByteArrayView("ID3").startsWith(mark);
    const bool mayBeId3v1 = QByteArrayView("TAG").startsWith(mark);
    if (mark.size() < 3 ? mayBeId3v2 || mayBeId3v1 : mayBeId3v2 && rest.size() < id3HeaderBytes)
        return Step::NeedsMore;
    if (mayBeId3v2)
        m_skip = id3v2Size(rest);
    else if (mayBeId3v1)
        m_skip = id3v1Bytes;
    if (m_skip == 0)
        m_state = State::Searching;
    return Step::Further;
}

FrameScanner::Step FrameScanner::search(QByteArrayView bytes, qsizetype &at)
{
    while (true) {
        const qsizetype sync = bytes.indexOf('\xFF', at);
        at = sync < 0 ? bytes.size() : sync;
        const QByteArrayView rest = bytes.sliced(at);
        if (rest.size() < audioFrameHeaderBytes)
            return Step::NeedsMore;
        const auto header = readAudioFrameHeader(rest);
        if (header && (!m_first || m_first->format == header->format)) {
            const auto size = qsizetype(header->size);
            if (rest.size() < size + audioFrameHeaderBytes)
                return Step::NeedsMore;
            const auto next = readAudioFrameHeader(rest.sliced(size));
            if (next && next->key == header->key) {
                m_key = header->key;
                m_state = State::InStep;
                if (!m_first)
                    m_first = header;
                return Step::Further;
            }
        }
        ++at;
    }
}

} // namespace orvel
