#pragma once

#include "api/json/JsonValue.h"

namespace orvel {

// An object that is not a JSON value itself but may stand in a tree that is written.
class JsonObjectProxy
{
public:
    virtual ~JsonObjectProxy() = default;
    virtual QString className() const = 0;
    // Returns the value to write in its place, or an absent one.
    virtual JsonValue proxyForJson() const { return {}; }
};

} // namespace orvel
