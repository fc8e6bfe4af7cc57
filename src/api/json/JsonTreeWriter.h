#pragma once

#include "api/json/JsonBase.h"
#include "api/json/JsonTextBuffer.h"
#include "api/json/JsonValue.h"

#include <vector>

namespace orvel {

struct JsonStyle
{
    bool humanReadable = false; // members on lines of their own, indented by two spaces a level
    bool sortKeys = false;      // members in the order of their keys instead of the object's own
    qsizetype maxLength = 0;    // about where the text is cut, with "…" behind; 0: no limit
};

// Writes one tree, without recursion.
class JsonTreeWriter
{
public:
    JsonTreeWriter(JsonStyle style, JsonBase &errors) : m_style(style), m_errors(errors) {}

    // Returns a null text after an error.
    QString write(const JsonValue &root);

    // Returns what a foreign object offers to be written, followed through other foreign objects. A foreign
    // object that offers an absent value, or always another foreign one, is returned, as is every other
    // value.
    static JsonValue offeredValue(const JsonValue &value);

private:
    struct Open
    {
        JsonValue container;
        const std::vector<JsonValue> &values;
        const std::vector<QString> *keys; // nullptr for an array
        std::vector<size_t> order{};      // of the members, when they are sorted
        size_t next = 0;

        size_t place(size_t index) const { return order.empty() ? index : order[index]; }
    };

    bool writeTree(const JsonValue &root);
    bool writeValue(const JsonValue &value);
    bool writeOffered(const JsonValue &value);
    bool openContainer(const JsonValue &container);
    bool writeNext();
    void closeContainer();
    void writeString(QStringView text);
    void writeEscaped(char16_t unit);
    void breakLine();
    void addErrorsAround();

    JsonStyle m_style;
    JsonBase &m_errors;
    std::vector<Open> m_open;
    JsonTextBuffer m_text{128};
};

} // namespace orvel
