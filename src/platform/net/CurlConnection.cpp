#include "platform/net/CurlConnection.h"

#include "platform/net/NetErrors.h"

#include <algorithm>

namespace orvel {

namespace {

// Enough to recognise a bare ICY answer's status line, wherever the network split it.
constexpr std::size_t firstChunkSize = 16;

} // namespace

std::shared_ptr<UrlConnection> UrlConnection::start(const UrlRequest &request,
                                                    std::shared_ptr<UrlConnectionDelegate> delegate)
{
    return CurlConnection::start({.request = request}, std::move(delegate));
}

void closeConnections() { CurlLoop::close(); }

std::shared_ptr<CurlConnection> CurlConnection::start(CurlDemand demand,
                                                      std::shared_ptr<UrlConnectionDelegate> delegate)
{
    const auto connection = std::make_shared<CurlConnection>(std::move(demand), std::move(delegate));
    CURLcode result = connection->configure();
    if (connection->m_loop->add(connection) != CURLM_OK && result == CURLE_OK)
        result = CURLE_FAILED_INIT;
    if (result != CURLE_OK) {
        connection->m_loop->stop(*connection);
        connection->ended(result);
        connection->m_loop->deliverLater(connection);
    }
    return connection;
}

CurlConnection::CurlConnection(CurlDemand demand, std::shared_ptr<UrlConnectionDelegate> delegate)
    : m_demand(std::move(demand))
    , m_url(m_demand.request.url.encoded())
    , m_delegate(std::move(delegate))
    , m_loop(CurlLoop::current())
    , m_easy(curl_easy_init())
{
}

std::shared_ptr<CurlConnection> CurlConnection::self()
{
    return std::static_pointer_cast<CurlConnection>(shared_from_this());
}

CURLcode CurlConnection::configure()
{
    CurlOptions options(m_easy.get());
    m_headers = setUp(options, m_demand, m_url);
    options.set(CURLOPT_PRIVATE, static_cast<CurlTransfer *>(this));
    options.set(CURLOPT_PREREQFUNCTION, &CurlConnection::onRequest);
    options.set(CURLOPT_PREREQDATA, this);
    options.set(CURLOPT_HEADERFUNCTION, &CurlConnection::onHeader);
    options.set(CURLOPT_HEADERDATA, this);
    options.set(CURLOPT_WRITEFUNCTION, &CurlConnection::onBody);
    options.set(CURLOPT_WRITEDATA, this);
    m_lastActivity = RunLoop::current().now();
    armIdleTimer(m_demand.request.idleTimeout);
    return options.result();
}

int CurlConnection::onRequest(void *connection, char *, char *, int, int)
{
    auto &it = *static_cast<CurlConnection *>(connection);
    // After a redirect curl may use a connection kept from earlier, and asks again when it was dead.
    if (it.m_awaitsAnswer && it.m_demand.post)
        return CURL_PREREQFUNC_ABORT;
    it.m_awaitsAnswer = true;
    return CURL_PREREQFUNC_OK;
}

std::size_t CurlConnection::onHeader(char *bytes, std::size_t, std::size_t count, void *connection)
{
    auto &it = *static_cast<CurlConnection *>(connection);
    it.m_awaitsAnswer = false;
    if (!it.m_head.addLine({bytes, qsizetype(count)}))
        return 0;
    it.m_lastActivity = RunLoop::current().now();
    if (it.m_head.isFinal() && !it.m_headDelivered)
        it.m_loop->markReady(it.self());
    return count;
}

std::size_t CurlConnection::onBody(char *bytes, std::size_t, std::size_t count, void *connection)
{
    auto &it = *static_cast<CurlConnection *>(connection);
    // Compressed bodies grow a thousandfold.
    if (it.m_suspended || it.m_arrived.size() >= std::size_t(it.m_demand.request.readAhead)) {
        it.m_readingPaused = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    it.m_head.bodyBegins();
    it.m_arrived.insert(it.m_arrived.end(), bytes, bytes + count);
    it.m_lastActivity = RunLoop::current().now();
    it.m_loop->markReady(it.self());
    return count;
}

void CurlConnection::ended(CURLcode result)
{
    RunLoop::current().cancel(m_idleTimer);
    if (result == CURLE_OK)
        m_head.bodyBegins();
    m_end = End{result == CURLE_OK ? std::nullopt : std::optional(errorOf(result))};
}

NetError CurlConnection::errorOf(CURLcode result) const
{
    // Our own refusal to ask again.
    if (result == CURLE_ABORTED_BY_CALLBACK)
        return netError(NetError::Code::ConnectionLost);
    // What came was no answer of HTTP; else it is a redirect's address that is not.
    if (result == CURLE_UNSUPPORTED_PROTOCOL && m_awaitsAnswer)
        return netError(NetError::Code::Other);
    if (result == CURLE_UNSUPPORTED_PROTOCOL && mustStaySecure(m_demand, m_url))
        return {NetError::Code::NotSecure,
                QStringLiteral("Le serveur renvoie vers une adresse non sécurisée : rien n'y a été envoyé.")};
    return netError(result, m_easy.get());
}

void CurlConnection::deliver()
{
    if (m_delivering)
        return;
    const auto alive = self();
    m_delivering = true;
    while (m_delegate && !m_suspended && deliverNext()) {
    }
    m_delivering = false;
}

bool CurlConnection::deliverNext()
{
    const std::shared_ptr<UrlConnectionDelegate> delegate = m_delegate;
    if (m_head.isFinal() && !m_headDelivered) {
        m_headDelivered = true;
        delegate->didReceiveResponse(*this, m_head.response());
        return true;
    }
    if (!m_arrived.empty() && (m_dataDelivered || m_arrived.size() >= firstChunkSize || m_end)) {
        m_dataDelivered = true;
        m_arrived.swap(m_delivered);
        delegate->didReceiveData(*this, {m_delivered.data(), qsizetype(m_delivered.size())});
        m_delivered.clear();
        if (!m_suspended)
            continueReading();
        return true;
    }
    if (m_end) {
        const End end = *m_end;
        letGo();
        if (end.error)
            delegate->didFailWithError(*this, *end.error);
        else
            delegate->connectionDidFinishLoading(*this);
    }
    return false;
}

void CurlConnection::cancel()
{
    if (m_loop)
        letGo();
}

void CurlConnection::suspend()
{
    // curl is told by the next write.
    m_suspended = true;
    RunLoop::current().cancel(m_idleTimer);
}

void CurlConnection::resume()
{
    if (!m_loop || !m_suspended)
        return;
    m_suspended = false;
    m_lastActivity = RunLoop::current().now();
    if (!m_end)
        armIdleTimer(m_demand.request.idleTimeout);
    continueReading();
    m_loop->deliverLater(self());
}

void CurlConnection::readAtMostEvery(double seconds)
{
    // What arrives during a rest must be seen before it counts as late.
    const double idleTimeout = m_demand.request.idleTimeout;
    m_readingInterval = idleTimeout > 0 ? std::min(seconds, idleTimeout / 2) : seconds;
    if (m_loop && seconds <= 0)
        m_loop->endRest(*this);
}

void CurlConnection::continueReading()
{
    if (!m_readingPaused || !m_loop || m_end)
        return;
    m_readingPaused = false;
    const CURLcode result = curl_easy_pause(m_easy.get(), CURLPAUSE_CONT); // may write
    if (result != CURLE_OK) {
        m_loop->stop(*this);
        ended(result);
    }
}

void CurlConnection::armIdleTimer(double seconds)
{
    if (m_demand.request.idleTimeout > 0)
        m_idleTimer = RunLoop::current().after(
            seconds, [this] { checkIdle(); }, RunLoop::Lane::Service);
}

void CurlConnection::checkIdle()
{
    const double now = RunLoop::current().now();
    if (m_delivering)
        m_lastActivity = now; // it is the delegate that takes its time
    const double left = m_lastActivity + m_demand.request.idleTimeout - now;
    constexpr double rounding = 1e-6;
    if (left > rounding) {
        armIdleTimer(left);
        return;
    }
    m_loop->stop(*this);
    m_end = End{netError(NetError::Code::TimedOut)};
    deliver();
}

void CurlConnection::letGo()
{
    const auto alive = self();
    const std::shared_ptr<UrlConnectionDelegate> delegate =
        std::move(m_delegate); // its end may come back here
    RunLoop::current().cancel(m_idleTimer);
    const std::shared_ptr<CurlLoop> loop = std::move(m_loop);
    loop->remove(*this);
    m_easy.reset();
    m_headers.reset();
    m_end.reset();
}

} // namespace orvel
