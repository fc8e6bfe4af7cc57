#pragma once

#include "platform/modal/HttpRequest.h"

namespace orvel {

// A POST to the station's API, signed now and ready to start: 60 s, no body. A path that makes no URL fails
// when it is started. A form request adds its fields.
std::shared_ptr<HttpRequest> makeSignedRequest(const QString &path);

// The same for the radio network's list of web radios.
std::shared_ptr<HttpRequest> makeSignedNetworkRequest();

} // namespace orvel
