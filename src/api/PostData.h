#pragma once

#include "api/json/JsonValue.h"
#include "platform/modal/HttpRequest.h"

#include <memory>

namespace orvel {

// Receives the outcome of one request, before the request operation returns. Main thread.
class PostDataDelegate
{
public:
    virtual ~PostDataDelegate() = default;
    // The whole answer: an object or an array.
    // Deliberate: the HTTP status does not count, as the server sends its own errors as objects
    // (PostDataTest.JudgesAnAnswerByItsBodyAlone)
    virtual void PostSuccess(const JsonValue &response) = 0;
    // A text to show to the user.
    virtual void PostFail(const QString &message) = 0;
};

// One signed request for server data; made anew for each. Its operations wait for the answer (see
// HttpRequest) and keep the object and its delegate alive meanwhile. When the application quits during the
// wait the delegate is not called.
class PostData : public HttpRequestDelegate, public std::enable_shared_from_this<PostData>
{
public:
    // Carried for the caller, read by no operation.
    QString strTitle;

    void setDelegate(std::shared_ptr<PostDataDelegate> delegate) { m_delegate = std::move(delegate); }

    // The station API's endpoint of this path, parameters included.
    void postGetSecondSection(const QString &path);
    // The radio network's list of web radios.
    void postGetTarvaneRadio();
    // The station API without a path.
    // Deliberate: the text is ignored, until there are comments to send
    // (PostDataTest.SendsTheSignedHeadersInOrderAndNoBody)
    void postCommints(const QString &text);

    void requestFinished(HttpRequest &request) override;
    void requestFailed(HttpRequest &request) override;

private:
    void run(const std::shared_ptr<HttpRequest> &request);

    std::shared_ptr<PostDataDelegate> m_delegate;
};

} // namespace orvel
