#pragma once

#include "platform/net/HeaderFields.h"

namespace orvel {

// How a private cache may use an answer (RFC 9111).
struct HttpFreshness
{
    bool mayBeStored = false;
    // From its arrival; 0 when it has to be validated before each use.
    double seconds = 0;
};

// Of an answer with these fields that has arrived at `now` (seconds since 1970).
HttpFreshness httpFreshness(const HeaderFields &fields, double now);

} // namespace orvel
