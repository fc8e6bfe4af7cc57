#pragma once

#include "platform/net/UrlRequest.h"

#include <curl/curl.h>

namespace orvel {

NetError netError(NetError::Code code);
// Of a transfer that has ended with this result (not CURLE_OK).
NetError netError(CURLcode result, CURL *easy);

} // namespace orvel
