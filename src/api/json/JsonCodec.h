#pragma once

#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"

namespace orvel {

// A reader and a writer in one. The forms with an `error` keep the trace of the failed part as their own and
// store its last error there, when it is not null.
class JsonCodec : public JsonBase
{
public:
    QString stringWithObject(const JsonValue &value, bool allowScalar, JsonError *error);
    QString stringWithObject(const JsonValue &value, JsonError *error = nullptr)
    {
        return stringWithObject(value, false, error);
    }
    QString stringWithFragment(const JsonValue &value, JsonError *error)
    {
        return stringWithObject(value, true, error);
    }

    JsonValue objectWithString(const JsonInput &text, bool allowScalar, JsonError *error);
    JsonValue objectWithString(const JsonInput &text, JsonError *error = nullptr)
    {
        return objectWithString(text, false, error);
    }
    JsonValue fragmentWithString(const JsonInput &text, JsonError *error)
    {
        return objectWithString(text, true, error);
    }

    // Of reader and writer.
    void setMaxDepth(unsigned maxDepth);
    bool humanReadable() const { return m_writer.humanReadable(); }
    void setHumanReadable(bool humanReadable) { m_writer.setHumanReadable(humanReadable); }
    bool sortKeys() const { return m_writer.sortKeys(); }
    void setSortKeys(bool sortKeys) { m_writer.setSortKeys(sortKeys); }

private:
    void takeErrors(bool hasFailed, const JsonBase &part, JsonError *error);

    JsonWriter m_writer;
    JsonParser m_parser;
};

} // namespace orvel
