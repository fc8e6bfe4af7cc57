#pragma once

#include "platform/modal/HttpRequest.h"

namespace orvel {

// Returns a POST to the station's API, signed now and ready to start: 60 s, no body. A form request adds its
// fields.
// Deliberate: the content type is JSON, and the body empty: the path is the whole request
// (PostDataTest.SendsTheSignedHeadersInOrderAndNoBody)
// Deliberate: the path is not escaped, so that one with a space fails when it is started
// (PostDataTest.TellsWhyARequestFailed)
std::shared_ptr<HttpRequest> makeSignedRequest(const QString &path);

// Returns the same for the radio network's list of web radios.
std::shared_ptr<HttpRequest> makeSignedNetworkRequest();

} // namespace orvel
