#pragma once

#include "platform/net/HeaderFields.h"
#include "platform/net/UrlRequest.h"

#include <memory>
#include <utility>
#include <vector>

namespace orvel {

class HttpRequest;

class HttpRequestDelegate
{
public:
    virtual ~HttpRequestDelegate() = default;
    virtual void requestFinished(HttpRequest &request) = 0;
    virtual void requestFailed(HttpRequest &request) = 0;
};

// One request that its caller waits for, while the event loop goes on beneath it: pictures, the progress
// overlay and live sound keep flowing, the user's input is swallowed, and screens' delayed performs wait (see
// RunLoop and InputGate). Main thread, and only from inside a screen's delayed perform.
class HttpRequest : public std::enable_shared_from_this<HttpRequest>
{
public:
    // A text that is not a URL is accepted here; the request then fails.
    explicit HttpRequest(const QString &url);
    ~HttpRequest();

    // "GET", as it is unless set, or "POST".
    void setRequestMethod(const QByteArray &method);
    // Of the whole transfer. 60 unless set.
    void setTimeOutSeconds(double seconds);
    void addRequestHeader(const QString &name, const QString &value);
    // The fields become the URL-encoded body of a POST, and the content type becomes
    // "application/x-www-form-urlencoded; charset=utf-8" when it is built. Without fields the body is empty.
    void addPostValue(const QString &value, const QString &key);
    // Kept alive until it has been called.
    void setDelegate(std::shared_ptr<HttpRequestDelegate> delegate);

    // Returns after the delegate was called, or without calling it when the application quits meanwhile. An
    // answer of any HTTP status finishes; one of over 16 MiB fails.
    void startSynchronous();

    // Returns the body as text in the charset that the answer names (UTF-8 unless it names one), or a null
    // text when it does not decode.
    QString responseString() const;
    const UrlResponse &response() const;
    const QByteArray &responseData() const;
    const NetError &error() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace orvel
