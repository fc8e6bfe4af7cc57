#pragma once

#include "platform/foundation/Url.h"
#include "platform/net/HeaderFields.h"

namespace orvel {

// A GET to make.
struct UrlRequest
{
    Url url;
    HeaderFields headers{};
    // Seconds without a byte (of the head: without a whole line) after which it has failed. 0: never.
    double idleTimeout = 60;
    // Takes an answer without a head as a body from its first byte on, as old streaming servers begin theirs
    // with "ICY 200 OK". For live streams only: anywhere else it is not an answer.
    bool acceptsBareAnswer = false;
    // Asks for gzip, and undoes it, unless `headers` say otherwise. False: no encoding is asked for.
    bool acceptsCompressed = true;
    // False: takes any certificate, for any host.
    bool verifiesServer = true;
    int maxRedirects = 20;
    // Reading pauses when this many bytes wait to be delivered. One read more may come on top.
    qsizetype readAhead = 1024 * 1024;
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
        NoNetwork,
        ConnectionLost,
        UnsupportedUrl,
        TooManyRedirects,
        NotSecure,
        CannotWriteToFile,
        Other
    };
    Code code = Code::Other;
    QString localizedDescription; // French
};

} // namespace orvel
