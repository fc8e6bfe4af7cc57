#pragma once

#include "platform/net/UrlConnection.h"

#include <optional>

namespace orvel {

// Reads a file over HTTP from an offset on, as fast as its reader takes the bytes and no faster. A connection
// that was lost while the reader wanted no bytes is taken up again, unheard, where it stopped. Belongs to one
// thread, from whose event loop the bytes come.
class FileReadStream final : public UrlConnectionDelegate, public std::enable_shared_from_this<FileReadStream>
{
public:
    struct Request
    {
        Url url;
        qint64 firstByte = 0;
        qint64 fileLength = 0; // 0 or less: not known
        bool verifiesServer = true;
    };
    // Returns nullptr when the URL's scheme is neither http nor https.
    static std::shared_ptr<FileReadStream> open(const Request &request);
    explicit FileReadStream(const Request &request);
    // The owner calls it before it lets go.
    void close();

    bool hasBytesAvailable() const { return m_bytesRead < m_bytes.size(); }
    // No byte is left, and no more come.
    bool hasEnded() const { return m_end == End::Reached && !hasBytesAvailable(); }
    // So too, as the connection failed, the server refused, or sent none of the bytes that were wanted for 30
    // seconds.
    bool hasFailed() const { return m_end == End::Failed && !hasBytesAvailable(); }
    // Of the first answer; nullptr before there is one.
    const HeaderFields *responseHeaders() const;

    // Returns up to `max` of the next bytes, and goes on behind them. Valid until the next event.
    QByteArrayView read(qsizetype max);
    // Bytes are wanted. To be called when none is available, before the thread waits for events.
    void awaitBytes();

    // Whether continueAt() saves reading the bytes between.
    bool canJump() const { return m_takesRanges; }
    // Goes on at another offset of the file.
    void continueAt(qint64 fileOffset);

private:
    enum class End { None, Reached, Failed };

    void connect(qint64 firstByte);
    void fail();
    void noteArrival();

    void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) override;
    void didReceiveData(UrlConnection &connection, QByteArrayView data) override;
    void didFailWithError(UrlConnection &connection, const NetError &error) override;
    void connectionDidFinishLoading(UrlConnection &connection) override;

    const Request m_request;
    std::shared_ptr<UrlConnection> m_connection; // nullptr when there is nothing more to come
    std::optional<HeaderFields> m_responseHeaders;
    bool m_takesRanges = false;
    End m_end = End::None;

    qint64 m_position = 0;     // the file's offset of the next byte to arrive
    qint64 m_connectedAt = -1; // where the connection began
    qint64 m_skip = 0;         // bytes to arrive that were not asked for
    QByteArray m_bytes;        // arrived
    qsizetype m_bytesRead = 0; // of them
    // While bytes are there, the connection rests.
    bool m_isHeldBack = false;
    double m_heldSince = 0;
    double m_awaitedSince = 0;
    // Long enough for a server to lose its patience; what has arrived since was at hand.
    bool m_wasHeldBack = false;
};

} // namespace orvel
