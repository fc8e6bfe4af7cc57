#pragma once

#include "platform/net/CurlHandles.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <unordered_map>
#include <vector>

namespace orvel {

// One easy handle at work, as the loop sees it. The handle's CURLOPT_PRIVATE is the CurlTransfer.
class CurlTransfer
{
public:
    virtual ~CurlTransfer() = default;
    virtual CURL *handle() const = 0;
    // Returns the seconds for which its socket rests after a read.
    virtual double readingInterval() const = 0;
    // The handle has done its work; deliver() follows. Must not call a delegate.
    virtual void ended(CURLcode result) = 0;
    // Hands what has arrived to the delegate. Not inside a call of curl, so it may do anything, a nested
    // event loop included.
    virtual void deliver() = 0;
    virtual void cancel() = 0;
};

// Drives the transfers of one thread on its event loop, through one multi handle. curl's own callbacks only
// note what has happened; it is delivered when curl has returned.
class CurlLoop : public std::enable_shared_from_this<CurlLoop>
{
public:
    // The calling thread's loop.
    static std::shared_ptr<CurlLoop> current();
    // Cancels every transfer of the calling thread and closes its connections.
    static void close();

    CurlLoop();
    CurlLoop(const CurlLoop &) = delete;
    CurlLoop &operator=(const CurlLoop &) = delete;

    // Begins the transfer and keeps it alive until remove().
    CURLMcode add(const std::shared_ptr<CurlTransfer> &transfer);
    void remove(CurlTransfer &transfer);
    // Takes the transfer's handle off the network and keeps the transfer.
    void stop(const CurlTransfer &transfer);
    // The transfer's interval is over: its socket is read at once.
    void endRest(const CurlTransfer &transfer);
    // Has the transfer deliver as soon as curl has returned. From inside curl's callbacks.
    void markReady(const std::shared_ptr<CurlTransfer> &transfer);
    // The same on a later turn of the event loop. From anywhere else.
    void deliverLater(const std::shared_ptr<CurlTransfer> &transfer);

private:
    struct Watch
    {
        QSocketNotifier *read;
        QSocketNotifier *write;
        CurlTransfer *transfer = nullptr; // whose socket it is now
        bool isWanted = false;            // for reading
    };
    static int onSocket(CURL *easy, curl_socket_t socket, int what, void *loop, void *);
    static int onTimer(CURLM *, long milliseconds, void *loop);
    void watch(curl_socket_t socket, int what, CURL *easy);
    QSocketNotifier *makeNotifier(curl_socket_t socket, QSocketNotifier::Type type, int event);
    void act(curl_socket_t socket, int events);
    void rest(curl_socket_t socket);
    void collectEnds();
    void deliverReady();

    std::unordered_map<CurlTransfer *, std::shared_ptr<CurlTransfer>> m_transfers;
    std::vector<std::shared_ptr<CurlTransfer>> m_ready;
    std::unordered_map<curl_socket_t, Watch> m_watches;
    QObject m_notifiers; // their parent
    QTimer m_timer;
    QTimer m_deliveryTimer;
    CurlMulti m_multi; // goes first: closing it calls back
};

} // namespace orvel
