#pragma once

#include "platform/net/UrlConnection.h"

#include <QStringList>
#include <functional>
#include <optional>

namespace orvel::test {

// Notes what a connection delivers; `also` runs inside each callback.
class RecordingDelegate : public UrlConnectionDelegate
{
public:
    void didReceiveResponse(UrlConnection &connection, const UrlResponse &it) override
    {
        response = it;
        note(connection, "response");
    }
    void didReceiveData(UrlConnection &connection, QByteArrayView bytes) override
    {
        if (body.isEmpty())
            firstChunk = bytes.size();
        body.append(bytes);
        if (events.last() != "data") // the first of a row
            note(connection, "data");
    }
    void didFailWithError(UrlConnection &connection, const NetError &it) override
    {
        error = it;
        isOver = true;
        note(connection, "failure");
    }
    void connectionDidFinishLoading(UrlConnection &connection) override
    {
        isOver = true;
        note(connection, "end");
    }

    QStringList events{""};
    UrlResponse response;
    QByteArray body;
    qsizetype firstChunk = 0;
    std::optional<NetError> error;
    bool isOver = false;
    std::function<void(UrlConnection &, const QString &event)> also = [](UrlConnection &, const QString &) {};

private:
    void note(UrlConnection &connection, const char *event)
    {
        events += QString::fromLatin1(event);
        also(connection, events.last());
    }
};

} // namespace orvel::test
