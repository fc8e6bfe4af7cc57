#pragma once

#include "platform/net/UrlRequest.h"

#include <QByteArrayView>

namespace orvel {

// The header field of an answer's content type, in a bare ICY answer in this case only.
inline const QString contentTypeKey = QStringLiteral("content-type");
// Returns an empty text when the answer has none.
inline QString contentTypeOf(const UrlResponse &response)
{
    return response.headers.value(contentTypeKey).value_or(QString());
}

// What is read out of one stream's answer: its head first, then its body in chunks of any size. One thread at
// a time.
class StreamReading
{
public:
    enum class ResponceType : quint32 { Unknown = 0, Http = 1, Icy = 2 };

    virtual ~StreamReading() = default;
    virtual void readResponse(const UrlResponse &response) = 0;
    virtual void readData(QByteArrayView chunk) = 0;
    // True once there is no more to read. What is read afterwards is ignored.
    virtual bool isOver() const = 0;
};

} // namespace orvel
