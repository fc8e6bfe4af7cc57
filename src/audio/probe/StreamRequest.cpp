#include "audio/probe/StreamRequest.h"

#include "platform/foundation/MainQueue.h"
#include "platform/net/UrlConnection.h"

#include <limits>
#include <utility>

namespace orvel {

namespace {

constexpr double timeout = 10; // seconds

UrlRequest urlRequest(const Url &url, StreamRequest::Purpose purpose)
{
    UrlRequest request{.url = url, .idleTimeout = timeout, .acceptsBareAnswer = true};
    const bool wantsMetadata = purpose == StreamRequest::Purpose::Probe;
    request.headers.set(QStringLiteral("Icy-MetaData"),
                        wantsMetadata ? QStringLiteral("1") : QStringLiteral("0"));
    // Sound is never packed: what claims to be could only unpack to a thousand times its size.
    request.headers.set(QStringLiteral("Accept-Encoding"), QStringLiteral("identity"));
    return request;
}

} // namespace

// One request: the connection's delegate. Main thread, but for the reading's steps, of which one at most is
// under way.
class StreamRequest::Transfer final : public UrlConnectionDelegate,
                                      public std::enable_shared_from_this<Transfer>
{
public:
    Transfer(SerialQueue queue, qint64 maxBytes, std::shared_ptr<StreamReading> reading, EndHandler ended)
        : m_selfQueue(std::move(queue))
        , m_bytesLeft(maxBytes)
        , m_reading(std::move(reading))
        , m_ended(std::move(ended))
    {
    }

    void start(const UrlRequest &request)
    {
        m_connection = UrlConnection::start(request, shared_from_this());
    }

    // Returns what was to be called at the end.
    EndHandler cancel()
    {
        if (const std::shared_ptr<UrlConnection> connection = std::exchange(m_connection, nullptr))
            connection->cancel();
        return std::exchange(m_ended, nullptr);
    }

    void didReceiveResponse(UrlConnection &, const UrlResponse &response) override
    {
        m_serverResponse = response;
        read([response](StreamReading &reading) { reading.readResponse(response); });
    }

    void didReceiveData(UrlConnection &, QByteArrayView data) override
    {
        m_bytesLeft -= data.size();
        read([bytes = data.toByteArray()](StreamReading &reading) { reading.readData(bytes); });
    }

    void didFailWithError(UrlConnection &, const NetError &error) override { end(error); }
    void connectionDidFinishLoading(UrlConnection &) override { end({}); }

private:
    void read(std::function<void(StreamReading &)> step)
    {
        m_connection->suspend();
        m_selfQueue.async([transfer = shared_from_this(), step = std::move(step)] {
            step(*transfer->m_reading);
            MainQueue::async([transfer] { transfer->wasRead(); });
        });
    }

    void wasRead()
    {
        if (!m_connection) // cancelled meanwhile
            return;
        if (m_reading->isOver() || m_bytesLeft <= 0)
            end({});
        else
            m_connection->resume();
    }

    void end(const std::optional<NetError> &error)
    {
        const EndHandler ended = cancel();
        ended({m_serverResponse, error, m_reading->isOver()});
    }

    SerialQueue m_selfQueue;
    qint64 m_bytesLeft;
    const std::shared_ptr<StreamReading> m_reading;
    EndHandler m_ended;
    std::shared_ptr<UrlConnection> m_connection;
    std::optional<UrlResponse> m_serverResponse;
};

StreamRequest::StreamRequest(const QString &queueName) : m_selfQueue(queueName) {}

StreamRequest::~StreamRequest() { cancel(); }

void StreamRequest::start(const Url &url, Purpose purpose, std::shared_ptr<StreamReading> reading,
                          EndHandler ended)
{
    cancel();
    const qint64 maxBytes = purpose == Purpose::Probe ? maxProbedBytes : std::numeric_limits<qint64>::max();
    const auto transfer =
        std::make_shared<Transfer>(m_selfQueue, maxBytes, std::move(reading), std::move(ended));
    m_transfer = transfer;
    transfer->start(urlRequest(url, purpose));
}

void StreamRequest::cancel()
{
    if (const std::shared_ptr<Transfer> transfer = m_transfer.lock())
        transfer->cancel();
}

} // namespace orvel
