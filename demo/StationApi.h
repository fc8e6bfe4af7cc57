#pragma once

#include "demo/SignatureCheck.h"

#include <optional>

namespace orvel::demo {

// One service's signed API: POST requests below "/api/", answers in the envelope that clients read.
class StationApi
{
public:
    // `webradio` is the answer of the endpoint of that name.
    StationApi(KeyPair keys, QByteArray webradio);

    // Nothing when the request is not for the API.
    std::optional<WebAnswer> answer(const WebRequest &request) const;

private:
    WebAnswer endpoint(const QByteArray &path) const;

    SignatureCheck check_;
    QByteArray webradio_;
};

} // namespace orvel::demo
