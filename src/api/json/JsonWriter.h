#pragma once

#include "api/json/JsonBase.h"
#include "api/json/JsonTreeWriter.h"
#include "api/json/JsonValue.h"

namespace orvel {

// Writes a tree as JSON. A failure returns a null text and fills the error trace: first what could not be
// written, then the key of each object around it. A foreign object is replaced by the value that it offers.
class JsonWriter : public JsonBase
{
public:
    // An object or an array.
    QString stringWithObject(const JsonValue &value);
    // Any value.
    QString stringWithFragment(const JsonValue &value);

    bool humanReadable() const { return m_style.humanReadable; }
    void setHumanReadable(bool humanReadable) { m_style.humanReadable = humanReadable; }
    bool sortKeys() const { return m_style.sortKeys; }
    void setSortKeys(bool sortKeys) { m_style.sortKeys = sortKeys; }
    // Cuts what gets longer than about this number of characters, for people's eyes. 0: no limit.
    void setMaxLength(qsizetype characters) { m_style.maxLength = characters; }

private:
    JsonStyle m_style;
};

} // namespace orvel
