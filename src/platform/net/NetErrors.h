#pragma once

#include "platform/net/UrlRequest.h"

#include <curl/curl.h>

namespace orvel {

// Returns the error of this code, with its sentence.
NetError netError(NetError::Code code);
// Returns the error of a transfer that has ended with this result (not CURLE_OK).
NetError netError(CURLcode result, CURL *easy);

} // namespace orvel
