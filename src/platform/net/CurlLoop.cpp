#include "platform/net/CurlLoop.h"

#include "platform/foundation/RunLoop.h"

#include <algorithm>
#include <limits>

namespace orvel {

namespace {

std::shared_ptr<CurlLoop> &threadsLoop()
{
    thread_local std::shared_ptr<CurlLoop> loop;
    return loop;
}

CurlTransfer *ownerOf(CURL *easy)
{
    char *owner = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &owner);
    return reinterpret_cast<CurlTransfer *>(owner);
}

} // namespace

std::shared_ptr<CurlLoop> CurlLoop::current()
{
    RunLoop::current(); // made first, so that it outlives the transfers' timers
    std::shared_ptr<CurlLoop> &loop = threadsLoop();
    if (!loop)
        loop = std::make_shared<CurlLoop>();
    return loop;
}

void CurlLoop::close()
{
    const std::shared_ptr<CurlLoop> loop = std::move(threadsLoop());
    if (!loop)
        return;
    while (!loop->m_transfers.empty()) {
        const std::shared_ptr<CurlTransfer> transfer = loop->m_transfers.begin()->second;
        transfer->cancel();
    }
}

CurlLoop::CurlLoop()
{
    static const CURLcode global = curl_global_init(CURL_GLOBAL_DEFAULT);
    m_multi.reset(curl_multi_init());
    CURLM *const multi = m_multi.get();
    if (global != CURLE_OK || !multi ||
        curl_multi_setopt(multi, CURLMOPT_SOCKETFUNCTION, &CurlLoop::onSocket) != CURLM_OK ||
        curl_multi_setopt(multi, CURLMOPT_SOCKETDATA, this) != CURLM_OK ||
        curl_multi_setopt(multi, CURLMOPT_TIMERFUNCTION, &CurlLoop::onTimer) != CURLM_OK ||
        curl_multi_setopt(multi, CURLMOPT_TIMERDATA, this) != CURLM_OK)
        qFatal("libcurl can't be initialised");
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_notifiers, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
    m_deliveryTimer.setSingleShot(true);
    QObject::connect(&m_deliveryTimer, &QTimer::timeout, &m_notifiers, [this] { deliverReady(); });
}

CURLMcode CurlLoop::add(const std::shared_ptr<CurlTransfer> &transfer)
{
    m_transfers.emplace(transfer.get(), transfer);
    return curl_multi_add_handle(m_multi.get(), transfer->handle());
}

void CurlLoop::remove(CurlTransfer &transfer)
{
    stop(transfer);
    const auto last = m_transfers.extract(&transfer);
}

void CurlLoop::stop(const CurlTransfer &transfer)
{
    curl_multi_remove_handle(m_multi.get(), transfer.handle());
}

void CurlLoop::markReady(const std::shared_ptr<CurlTransfer> &transfer)
{
    if (std::find(m_ready.begin(), m_ready.end(), transfer) == m_ready.end())
        m_ready.push_back(transfer);
}

void CurlLoop::deliverLater(const std::shared_ptr<CurlTransfer> &transfer)
{
    markReady(transfer);
    m_deliveryTimer.start(0);
}

int CurlLoop::onSocket(CURL *easy, curl_socket_t socket, int what, void *loop, void *)
{
    static_cast<CurlLoop *>(loop)->watch(socket, what, easy);
    return 0;
}

int CurlLoop::onTimer(CURLM *, long milliseconds, void *loop)
{
    QTimer &timer = static_cast<CurlLoop *>(loop)->m_timer;
    if (milliseconds < 0)
        timer.stop();
    else
        timer.start(int(std::min<long>(milliseconds, std::numeric_limits<int>::max())));
    return 0;
}

void CurlLoop::watch(curl_socket_t socket, int what, CURL *easy)
{
    if (what == CURL_POLL_REMOVE) {
        const auto gone = m_watches.extract(socket);
        if (gone.empty())
            return;
        // One of them may be what called us.
        for (QSocketNotifier *notifier : {gone.mapped().read, gone.mapped().write}) {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
        return;
    }
    auto known = m_watches.find(socket);
    if (known == m_watches.end()) {
        const Watch made{makeNotifier(socket, QSocketNotifier::Read, CURL_CSELECT_IN),
                         makeNotifier(socket, QSocketNotifier::Write, CURL_CSELECT_OUT)};
        known = m_watches.emplace(socket, made).first;
    }
    known->second.transfer = ownerOf(easy);
    known->second.isWanted = (what & CURL_POLL_IN) != 0;
    known->second.read->setEnabled(known->second.isWanted);
    known->second.write->setEnabled((what & CURL_POLL_OUT) != 0);
}

QSocketNotifier *CurlLoop::makeNotifier(curl_socket_t socket, QSocketNotifier::Type type, int event)
{
    auto *notifier = new QSocketNotifier(type, &m_notifiers);
    notifier->setSocket(socket);
    QObject::connect(notifier, &QSocketNotifier::activated, &m_notifiers,
                     [this, socket, event] { act(socket, event); });
    return notifier;
}

void CurlLoop::act(curl_socket_t socket, int events)
{
    const auto self = shared_from_this();
    int running = 0;
    curl_multi_socket_action(m_multi.get(), socket, events, &running);
    collectEnds();
    deliverReady();
    rest(socket);
}

void CurlLoop::rest(curl_socket_t socket)
{
    const auto known = m_watches.find(socket);
    if (known == m_watches.end() || !known->second.read->isEnabled() ||
        !m_transfers.contains(known->second.transfer))
        return;
    const double seconds = known->second.transfer->readingInterval();
    if (seconds <= 0)
        return;
    QSocketNotifier *const reader = known->second.read;
    reader->setEnabled(false);
    RunLoop::current().after(
        seconds,
        [weak = weak_from_this(), socket, reader] {
            const auto loop = weak.lock();
            if (!loop)
                return;
            const auto watch = loop->m_watches.find(socket);
            if (watch != loop->m_watches.end() && watch->second.read == reader)
                reader->setEnabled(watch->second.isWanted);
        },
        RunLoop::Lane::Service);
}

void CurlLoop::endRest(const CurlTransfer &transfer)
{
    for (const auto &[socket, watch] : m_watches)
        if (watch.transfer == &transfer)
            watch.read->setEnabled(watch.isWanted);
}

void CurlLoop::collectEnds()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const CURLcode result = message->data.result; // the message goes with the handle
        const auto transfer = m_transfers.find(ownerOf(message->easy_handle));
        if (transfer == m_transfers.end())
            continue;
        stop(*transfer->second);
        transfer->second->ended(result);
        markReady(transfer->second);
    }
}

void CurlLoop::deliverReady()
{
    const auto self = shared_from_this();
    const auto ready = std::exchange(m_ready, {});
    for (const std::shared_ptr<CurlTransfer> &transfer : ready)
        transfer->deliver();
}

} // namespace orvel
