#pragma once

#include "platform/net/UrlRequest.h"

#include <curl/curl.h>

namespace orvel {

NetError netError(NetError::Code code);
NetError netError(CURLcode result);

} // namespace orvel
