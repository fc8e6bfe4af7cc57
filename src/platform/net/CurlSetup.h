#pragma once

#include "platform/net/CurlConnection.h"

namespace orvel {

// Tells `easy` what to ask for and under which rules; the callbacks are the connection's business. Returns
// the header list, which must live as long as the transfer, as must the demand.
CurlList setUp(CURL *easy, const CurlDemand &demand, const QByteArray &url);

} // namespace orvel
