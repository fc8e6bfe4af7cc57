#pragma once

#include "api/json/JsonValue.h"

namespace orvel {

// An object that is no JSON value itself but may stand in a tree that is written.
class JsonObjectProxy
{
public:
    virtual ~JsonObjectProxy() = default;
    virtual QString className() const = 0;
    // The value to write in its place; absent when the object has none.
    virtual JsonValue proxyForJson() const { return {}; }
};

} // namespace orvel
