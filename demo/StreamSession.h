#pragma once

#include "demo/Channel.h"
#include "demo/Connection.h"
#include "demo/StreamFaults.h"
#include "demo/StreamRequest.h"

#include <functional>

namespace orvel::demo {

struct StreamSettings
{
    qsizetype burst = 0;
    bool paced = true;
};

// Serves one listener on the calling thread: reads the request, answers, and sends until the stream ends, the
// listener leaves or the station stops.
class StreamSession
{
public:
    // Returns nullptr when there is no channel of that name.
    using FindChannel = std::function<Channel *(const QString &stream)>;

    StreamSession(Connection &connection, const StreamSettings &settings, QString siteUrl);

    void serve(const FindChannel &findChannel, const std::stop_token &stop);

private:
    using NextFrame = std::function<std::shared_ptr<const Frame>()>;

    void stream(Channel &channel, bool wantsMetadata, const std::stop_token &stop);
    void sendFrames(const NextFrame &next, qint64 interval);
    bool sendBody(QByteArrayView bytes);
    bool sendSlowly(QByteArrayView bytes);
    bool sendHead(const QByteArray &head);
    void sendStatus(int status);
    void sendPage();
    QByteArray head(const Programme &programme, const QByteArray &interval) const;
    QByteArray garbage(qsizetype size);

    Connection &m_connection;
    StreamSettings m_settings;
    QString m_siteUrl;
    StreamFaults m_faults;
    qint64 m_bodySent = 0;
    quint32 m_random = 1;
};

} // namespace orvel::demo
