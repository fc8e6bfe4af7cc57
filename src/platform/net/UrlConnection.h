#pragma once

#include "platform/net/UrlRequest.h"

#include <QByteArrayView>
#include <memory>

namespace orvel {

class UrlConnection;

// Receives one transfer: the response, then chunks, then the end or a failure. All on the thread that started
// the connection, from its event loop, never from inside start() or cancel(). A callback may cancel or drop
// the connection.
class UrlConnectionDelegate
{
public:
    virtual ~UrlConnectionDelegate() = default;
    // Once, before the first chunk and also before the end of an answer without a body.
    virtual void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) = 0;
    // The bytes are valid during the call only. The first chunk holds at least 16 bytes, unless the body is
    // shorter.
    virtual void didReceiveData(UrlConnection &connection, QByteArrayView data) = 0;
    virtual void didFailWithError(UrlConnection &connection, const NetError &error) = 0;
    virtual void connectionDidFinishLoading(UrlConnection &connection) = 0;
};

// An asynchronous GET over http or https, also after redirects, with nothing cached. The connection keeps
// itself and its delegate alive until it has ended or was cancelled.
class UrlConnection : public std::enable_shared_from_this<UrlConnection>
{
public:
    // Starts at once on the calling thread's event loop.
    static std::shared_ptr<UrlConnection> start(const UrlRequest &request,
                                                std::shared_ptr<UrlConnectionDelegate> delegate);
    virtual ~UrlConnection() = default;

    // No callback follows it. Safe anywhere on the connection's thread, also twice and inside a callback.
    virtual void cancel() = 0;
    // Stops reading from the server, the idle time-out suspended, until resume(). At most one chunk already
    // read may still come (it is kept and delivered after resume()).
    virtual void suspend() = 0;
    virtual void resume() = 0;
    // Once data has been read, looks for more only after that many seconds: a stream that is ahead of its use
    // comes in a few large chunks, with the machine at rest between them. 0, as at the start: at once.
    virtual void readAtMostEvery(double seconds) = 0;

protected:
    UrlConnection() = default;
};

// Cancels every connection of the calling thread and closes what is kept open for later ones; for the
// thread's end.
void closeConnections();

} // namespace orvel
