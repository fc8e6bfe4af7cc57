#include "platform/pictures/PictureDownload.h"

#include "platform/modal/HttpRequest.h"

namespace orvel {

namespace {

class Download final : public HttpRequestDelegate
{
public:
    std::optional<QByteArray> bytes;

private:
    void requestFinished(HttpRequest &request) override
    {
        const int status = request.response().statusCode;
        bytes = status >= 200 && status < 300 ? request.responseData() : QByteArray();
    }
    void requestFailed(HttpRequest &) override { bytes = QByteArray(); }
};

} // namespace

std::optional<QByteArray> downloadPicture(const QString &url)
{
    const auto download = std::make_shared<Download>();
    const auto request = std::make_shared<HttpRequest>(url);
    request->setDelegate(download);
    request->startSynchronous();
    return download->bytes;
}

} // namespace orvel
