#include "platform/media/parse/FrameScanner.h"

#include <algorithm>
#include <limits>

namespace orvel {

namespace {

constexpr qsizetype id3HeaderBytes = 10;
constexpr qint64 id3v1Bytes = 128;
// The bytes behind a frame that decide whether it was one.
constexpr qsizetype confirmationBytes = id3HeaderBytes;

// Returns the size of the ID3v2 tag (header, body, footer) that begins with these ten bytes; 0 when they are
// not the header of one.
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

// Whether these bytes may follow a frame with this header: another frame of the stream, a tag, or the end.
bool confirms(QByteArrayView rest, const AudioFrameHeader &header)
{
    const auto next = readAudioFrameHeader(rest);
    return rest.isEmpty() || (next && next->key == header.key) || rest.startsWith("TAG") ||
           (rest.startsWith("ID3") && rest.size() >= id3HeaderBytes && id3v2Size(rest) > 0);
}

} // namespace

qsizetype FrameScanner::scan(QByteArrayView bytes, std::vector<AudioStreamPacketDescription> &frames,
                             bool isEnd)
{
    qsizetype at = 0;
    Step step = Step::Further;
    while (step == Step::Further) {
        const qint64 skipped = std::min<qint64>(m_skip, bytes.size() - at);
        at += skipped;
        m_skip -= skipped;
        m_tagBytes += skipped;
        if (m_skip > 0)
            break;
        if (m_state == State::InStep)
            step = takeFrame(bytes, at, frames);
        else if (m_state == State::AtStart)
            step = passTag(bytes.sliced(at));
        else
            step = search(bytes, at, isEnd);
    }
    return at;
}

void FrameScanner::restart()
{
    m_state = State::AtStart;
    m_skip = 0;
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

FrameScanner::Step FrameScanner::search(QByteArrayView bytes, qsizetype &at, bool isEnd)
{
    qsizetype found = -1;
    qsizetype foundBy = std::numeric_limits<qsizetype>::max(); // the end of the bytes that confirm it
    qsizetype undecided = bytes.size();
    qsizetype sync = bytes.indexOf('\xFF', at);
    for (; sync >= 0 && sync < foundBy; sync = bytes.indexOf('\xFF', sync + 1)) {
        if (bytes.size() - sync < audioFrameHeaderBytes) {
            undecided = std::min(undecided, sync);
            break;
        }
        const auto header = readAudioFrameHeader(bytes.sliced(sync));
        if (!header || (m_first && m_first->format != header->format))
            continue;
        const qsizetype next = sync + qsizetype(header->size);
        const qsizetype decidedBy = next + confirmationBytes;
        if (isEnd ? next > bytes.size() : decidedBy > bytes.size()) {
            // What it claims may be long in coming: a true frame behind it does not wait for that.
            undecided = std::min(undecided, sync);
        } else if (decidedBy < foundBy && confirms(bytes.sliced(next), *header)) {
            found = sync;
            foundBy = decidedBy;
        }
    }
    if (found < 0) {
        at = undecided;
        return Step::NeedsMore;
    }
    at = found;
    const auto header = readAudioFrameHeader(bytes.sliced(at));
    m_key = header->key;
    m_state = State::InStep;
    if (!m_first)
        m_first = header;
    return Step::Further;
}

} // namespace orvel
