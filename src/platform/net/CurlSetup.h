#pragma once

#include "platform/net/CurlHandles.h"
#include "platform/net/UrlRequest.h"

#include <QByteArray>

namespace orvel {

// What a connection asks of the server: a GET unless said otherwise.
struct CurlDemand
{
    UrlRequest request;
    QByteArray method = QByteArrayLiteral("GET");
    QByteArray body{}; // of a POST or another method that takes one
};

// Tells `easy` what to ask for and under which rules; the callbacks are the connection's business. Returns
// the header list, which must live as long as the transfer, as must the demand.
CurlList setUp(CURL *easy, const CurlDemand &demand, const QByteArray &url);

} // namespace orvel
