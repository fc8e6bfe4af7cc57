#pragma once

#include "platform/net/HeaderFields.h"

namespace orvel {

// How a private cache may use an answer (RFC 9111).
struct HttpFreshness
{
    bool mayBeStored = false;
    // How long it may be used, from its arrival on. 0: it must be validated before each use.
    double seconds = 0;
};

// Returns the freshness of an answer with these fields that has arrived at `now` (seconds since 1970).
HttpFreshness httpFreshness(const HeaderFields &fields, double now);

} // namespace orvel
