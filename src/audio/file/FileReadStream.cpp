#include "audio/file/FileReadStream.h"

#include "audio/file/ByteRange.h"
#include "platform/foundation/ByteText.h"
#include "platform/foundation/RunLoop.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr double patience = 30; // seconds without a wanted byte
constexpr int maxRedirects = 10;
constexpr qsizetype readAhead = 128 * 1024; // bytes that a connection may have ahead of its reader
// A rest of this many seconds is one in which a server may have lost its patience.
constexpr double noticeableHold = 0.25;
// What comes later than this many seconds was not at hand when it was wanted.
constexpr double atHand = 1;

} // namespace

std::shared_ptr<FileReadStream> FileReadStream::open(const Request &request)
{
    const QString scheme = request.url.scheme();
    if (!equalsIgnoringCase(scheme, u"http") && !equalsIgnoringCase(scheme, u"https"))
        return nullptr;
    auto stream = std::make_shared<FileReadStream>(request);
    stream->connect(request.firstByte);
    return stream;
}

FileReadStream::FileReadStream(const Request &request) : m_request(request) {}

void FileReadStream::connect(qint64 firstByte)
{
    close();
    m_end = End::None;
    m_position = firstByte;
    m_connectedAt = firstByte;
    m_skip = 0;
    UrlRequest request{.url = m_request.url,
                       .idleTimeout = patience,
                       .acceptsCompressed = false,
                       .verifiesServer = m_request.verifiesServer,
                       .maxRedirects = maxRedirects,
                       .readAhead = readAhead};
    if (firstByte > 0)
        request.headers.set(QStringLiteral("Range"), rangeField(firstByte, m_request.fileLength));
    m_connection = UrlConnection::start(request, shared_from_this());
}

void FileReadStream::close()
{
    if (const std::shared_ptr<UrlConnection> connection = std::exchange(m_connection, nullptr))
        connection->cancel();
    m_isHeldBack = false;
    m_wasHeldBack = false;
}

const HeaderFields *FileReadStream::responseHeaders() const
{
    return m_responseHeaders ? &*m_responseHeaders : nullptr;
}

QByteArrayView FileReadStream::read(qsizetype max)
{
    const QByteArrayView bytes =
        QByteArrayView(m_bytes).sliced(m_bytesRead, std::min(max, m_bytes.size() - m_bytesRead));
    m_bytesRead += bytes.size();
    return bytes;
}

void FileReadStream::awaitBytes()
{
    if (!m_isHeldBack || !m_connection)
        return;
    m_isHeldBack = false;
    m_awaitedSince = RunLoop::current().now();
    m_wasHeldBack = m_wasHeldBack || m_awaitedSince - m_heldSince >= noticeableHold;
    m_connection->resume();
}

void FileReadStream::continueAt(qint64 fileOffset)
{
    const qint64 next = m_position - (m_bytes.size() - m_bytesRead);
    if (fileOffset >= next && fileOffset <= m_position) {
        m_bytesRead += fileOffset - next;
        return;
    }
    m_bytes.clear();
    m_bytesRead = 0;
    connect(fileOffset);
}

void FileReadStream::didReceiveResponse(UrlConnection &, const UrlResponse &response)
{
    constexpr int firstRefusal = 400;
    if (response.statusCode >= firstRefusal) {
        fail();
        return;
    }
    if (!m_responseHeaders)
        m_responseHeaders = response.headers;
    m_takesRanges = takesRanges(response);
    m_skip = m_position - firstByteOf(response, m_position);
    if (m_skip < 0)
        fail(); // the bytes between are not to be had
}

void FileReadStream::noteArrival()
{
    if (RunLoop::current().now() - m_awaitedSince > atHand)
        m_wasHeldBack = false;
}

void FileReadStream::didReceiveData(UrlConnection &connection, QByteArrayView data)
{
    noteArrival();
    const qint64 skipped = std::min<qint64>(m_skip, data.size());
    m_skip -= skipped;
    if (skipped == data.size())
        return;
    if (m_bytesRead == m_bytes.size()) {
        m_bytes.resize(0); // keeps its memory
        m_bytesRead = 0;
    }
    m_bytes.append(data.sliced(skipped));
    m_position += data.size() - skipped;
    connection.suspend();
    m_isHeldBack = true;
    m_heldSince = RunLoop::current().now();
}

void FileReadStream::didFailWithError(UrlConnection &, const NetError &)
{
    noteArrival();
    // One that brought no byte is not taken up again, so that there is an end to it.
    if (m_wasHeldBack && m_position > m_connectedAt)
        connect(m_position);
    else
        fail();
}

void FileReadStream::connectionDidFinishLoading(UrlConnection &)
{
    close();
    m_end = End::Reached;
}

void FileReadStream::fail()
{
    close();
    m_end = End::Failed;
}

} // namespace orvel
