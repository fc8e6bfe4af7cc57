#pragma once

#include "api/json/JsonBase.h"
#include "api/json/JsonKeyTable.h"
#include "api/json/JsonScanner.h"
#include "api/json/JsonValue.h"

#include <vector>

namespace orvel {

// Builds the tree of one JSON text, without recursion.
class JsonTreeReader
{
public:
    JsonTreeReader(QByteArrayView utf8, JsonBase &errors);

    // Returns the one value of the whole text, or an absent one after an error.
    JsonValue read();

private:
    enum class Next { Value, BehindValue, Failed };
    struct Open
    {
        bool isObject;
        size_t firstValue;
        size_t firstKey;
    };

    bool readTree();
    Next readValue();
    Next readWord(QByteArrayView rest, const JsonValue &value, const QString &description);
    Next readItem(bool isObject);
    Next readElement();
    Next readMember();
    bool readKey();
    Next readBehindItem(bool isObject);
    Next openContainer(bool isObject);
    Next closeContainer();
    // Reports that the value that is due is missing, and with it that of each array or object around it.
    Next failValue();
    Next failValue(int code, const QString &description);
    // Reports that the innermost array or object is broken.
    Next failContainer(int code, const QString &description);
    // Moves the values gathered from `first` on.
    void takeValues(size_t first, std::vector<JsonValue> &values);
    void leaveContainer();

    JsonScanner m_scanner;
    JsonBase &m_errors;
    std::vector<Open> m_open;
    // Gathered for all that is open.
    std::vector<JsonValue> m_values;
    std::vector<JsonKeyTable::Key *> m_keys;
    JsonKeyTable m_table;
};

} // namespace orvel
