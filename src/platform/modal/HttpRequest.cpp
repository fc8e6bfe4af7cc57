#include "platform/modal/HttpRequest.h"

#include "platform/foundation/ByteText.h"
#include "platform/foundation/RunLoop.h"
#include "platform/modal/InputGate.h"
#include "platform/net/CurlConnection.h"
#include "platform/net/NetErrors.h"

#include <QEventLoop>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStringDecoder>
#include <QUrl>

namespace orvel {

namespace {

constexpr qsizetype maxBytes = 16 * 1024 * 1024;

QByteArray formBody(const std::vector<std::pair<QString, QString>> &fields)
{
    QByteArrayList pairs;
    for (const auto &[key, value] : fields)
        pairs += QUrl::toPercentEncoding(key) + '=' + QUrl::toPercentEncoding(value);
    return pairs.join('&');
}

QString charsetOf(const HeaderFields &headers)
{
    static const QRegularExpression parameter(QStringLiteral(R"re(;\s*charset\s*=\s*"?([^\s;"]+))re"),
                                              QRegularExpression::CaseInsensitiveOption);
    return parameter.match(headers.value(QStringLiteral("Content-Type")).value_or(QString())).captured(1);
}

// Gathers an answer until it is whole or has failed, and ends the wait then.
class Answer final : public UrlConnectionDelegate
{
public:
    void didReceiveResponse(UrlConnection &, const UrlResponse &it) override { response = it; }
    void didReceiveData(UrlConnection &connection, QByteArrayView bytes) override
    {
        if (data.size() + bytes.size() <= maxBytes) {
            data.append(bytes);
            return;
        }
        connection.cancel();
        fail({NetError::Code::Other, QStringLiteral("La réponse du serveur est trop longue.")});
    }
    void didFailWithError(UrlConnection &, const NetError &it) override { fail(it); }
    void connectionDidFinishLoading(UrlConnection &) override { end(); }
    void fail(const NetError &why)
    {
        error = why;
        end();
    }

    UrlResponse response;
    QByteArray data;
    std::optional<NetError> error;
    bool isComplete = false;
    QEventLoop wait;

private:
    void end()
    {
        isComplete = true;
        wait.quit();
    }
};

} // namespace

struct HttpRequest::Private
{
    QString url;
    QByteArray method = QByteArrayLiteral("GET");
    double timeOut = 60;
    HeaderFields headers;
    std::vector<std::pair<QString, QString>> form; // key, value
    std::shared_ptr<HttpRequestDelegate> delegate;

    UrlResponse response;
    QByteArray data;
    std::optional<NetError> error;

    // False when the application quits before there is an answer.
    bool waitForAnswer(const Url &address);
};

HttpRequest::HttpRequest(const QString &url) : d(std::make_unique<Private>()) { d->url = url; }

HttpRequest::~HttpRequest() = default;

void HttpRequest::setRequestMethod(const QByteArray &method) { d->method = method; }
void HttpRequest::setTimeOutSeconds(double seconds) { d->timeOut = seconds; }
void HttpRequest::addRequestHeader(const QString &name, const QString &value) { d->headers.set(name, value); }
void HttpRequest::addPostValue(const QString &value, const QString &key) { d->form.emplace_back(key, value); }
void HttpRequest::setDelegate(std::shared_ptr<HttpRequestDelegate> delegate)
{
    d->delegate = std::move(delegate);
}

void HttpRequest::startSynchronous()
{
    RunLoop &loop = RunLoop::main();
    // Below a handler of a button or a layout the wait would run under code that is not made for it.
    Q_ASSERT(loop.isInScreenEntry());
    const auto alive = shared_from_this();
    // Both last until the delegate has dealt with the answer: the next request that is due waits for this
    // one.
    InputGate::shared().hold();
    loop.holdScreens();
    const auto letGo = qScopeGuard([&loop] {
        loop.releaseScreens();
        InputGate::shared().release();
    });
    const std::optional<Url> address = Url::fromText(d->url);
    if (!address)
        d->error = netError(NetError::Code::UnsupportedUrl);
    else if (!d->waitForAnswer(*address))
        return;
    const std::shared_ptr<HttpRequestDelegate> delegate = std::move(d->delegate);
    if (!delegate)
        return;
    if (d->error)
        delegate->requestFailed(*this);
    else
        delegate->requestFinished(*this);
}

bool HttpRequest::Private::waitForAnswer(const Url &address)
{
    if (!form.empty())
        headers.set(QStringLiteral("Content-Type"),
                    QStringLiteral("application/x-www-form-urlencoded; charset=utf-8"));
    const auto answer = std::make_shared<Answer>();
    const auto connection =
        CurlConnection::start({.request = {.url = address, .headers = headers, .idleTimeout = 0},
                               .post = method == "POST" ? std::optional(formBody(form)) : std::nullopt},
                              answer);
    RunLoop &loop = RunLoop::main();
    const RunLoop::Token timer = loop.after(
        timeOut, [answer] { answer->fail(netError(NetError::Code::TimedOut)); }, RunLoop::Lane::Service);
    // Ends by the answer, or at once when the application quits.
    answer->wait.exec();
    loop.cancel(timer);
    connection->cancel();
    if (!answer->isComplete)
        return false;
    response = std::move(answer->response);
    data = std::move(answer->data);
    error = std::move(answer->error);
    return true;
}

QString HttpRequest::responseString() const
{
    const QString charset = charsetOf(d->response.headers);
    if (charset.isEmpty() || equalsIgnoringCase(charset, u"utf-8"))
        return decodeUtf8(d->data).value_or(QString());
    QStringDecoder decoder(charset.toLatin1().constData(), QStringConverter::Flag::Stateless);
    if (!decoder.isValid())
        return decodeUtf8(d->data).value_or(QString());
    const QString text = decoder(d->data);
    return decoder.hasError() ? QString() : text;
}

const UrlResponse &HttpRequest::response() const { return d->response; }
const QByteArray &HttpRequest::responseData() const { return d->data; }

const NetError &HttpRequest::error() const
{
    static const NetError none;
    return d->error ? *d->error : none;
}

} // namespace orvel
