#pragma once

#include "platform/net/CurlHandles.h"
#include "platform/net/CurlOptions.h"
#include "platform/net/UrlRequest.h"

#include <QByteArray>
#include <optional>

namespace orvel {

// What a connection asks of the server: a GET, or a POST of this body. A POST is sent once, and never on a
// connection kept from earlier.
struct CurlDemand
{
    UrlRequest request;
    std::optional<QByteArray> post{};
};

// Whether redirects must stay under encryption: what was posted so is not posted again in the clear.
bool mustStaySecure(const CurlDemand &demand, const QByteArray &url);

// Sets what to ask for and under which rules; the callbacks are the connection's business. Returns the header
// list, which must live as long as the transfer, as must the demand.
CurlList setUp(CurlOptions &options, const CurlDemand &demand, const QByteArray &url);

} // namespace orvel
