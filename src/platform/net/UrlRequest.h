#pragma once

#include "platform/foundation/Url.h"
#include "platform/net/HeaderFields.h"

namespace orvel {

// A GET to make: where, with which headers, and after how many seconds without a byte (of the head: without a
// whole line) it has failed (0: never).
struct UrlRequest
{
    Url url;
    HeaderFields headers{};
    double idleTimeout = 60;
};

// The head of an answer. A bare ICY answer has status code 0 and no headers: its head is in the body.
struct UrlResponse
{
    int statusCode = 0;
    HeaderFields headers{};
};

// Why a transfer failed: a stable code for programs, a sentence for people.
struct NetError
{
    enum class Code {
        Cancelled,
        TimedOut,
        CannotFindHost,
        CannotConnect,
        ConnectionLost,
        UnsupportedUrl,
        TooManyRedirects,
        CannotWriteToFile,
        Other
    };
    Code code = Code::Other;
    QString localizedDescription;
};

} // namespace orvel
