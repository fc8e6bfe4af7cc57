#pragma once

#include "platform/net/CurlLoop.h"
#include "platform/net/CurlSetup.h"
#include "platform/net/HeadReader.h"
#include "platform/net/UrlConnection.h"

#include "platform/foundation/RunLoop.h"

#include <QByteArray>
#include <optional>
#include <vector>

namespace orvel {

// A connection on curl. What arrives is appended to one buffer while the other is delivered; both are kept
// for the connection's life. A delegate that runs a nested event loop is not called inside it.
class CurlConnection final : public UrlConnection, public CurlTransfer
{
public:
    static std::shared_ptr<CurlConnection> start(CurlDemand demand,
                                                 std::shared_ptr<UrlConnectionDelegate> delegate);
    CurlConnection(CurlDemand demand, std::shared_ptr<UrlConnectionDelegate> delegate);

    void cancel() override;
    void suspend() override;
    void resume() override;
    void readAtMostEvery(double seconds) override;

    double readingInterval() const override { return m_readingInterval; }
    CURL *handle() const override { return m_easy.get(); }
    void ended(CURLcode result) override;
    void deliver() override;

private:
    struct End
    {
        std::optional<NetError> error;
    };
    static int onRequest(void *connection, char *, char *, int, int);
    static std::size_t onHeader(char *bytes, std::size_t, std::size_t count, void *connection);
    static std::size_t onBody(char *bytes, std::size_t, std::size_t count, void *connection);
    std::shared_ptr<CurlConnection> self();
    CURLcode configure();
    NetError errorOf(CURLcode result) const;
    bool deliverNext();
    void continueReading();
    void armIdleTimer(double seconds);
    void checkIdle();
    void letGo();

    const CurlDemand m_demand;
    const QByteArray m_url;
    std::shared_ptr<UrlConnectionDelegate> m_delegate; // nullptr once it is over
    std::shared_ptr<CurlLoop> m_loop;                  // nullptr once it is over
    CurlList m_headers;
    CurlEasy m_easy;

    HeadReader m_head;
    std::vector<char> m_arrived;
    std::vector<char> m_delivered;
    std::optional<End> m_end;    // not delivered yet
    bool m_awaitsAnswer = false; // a request is out, and no line of its answer has come
    bool m_headDelivered = false;
    bool m_dataDelivered = false;
    bool m_delivering = false;
    bool m_suspended = false;
    bool m_readingPaused = false;
    double m_readingInterval = 0;
    double m_lastActivity = 0;
    RunLoop::Token m_idleTimer = 0;
};

} // namespace orvel
