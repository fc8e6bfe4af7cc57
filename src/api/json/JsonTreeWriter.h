#pragma once

#include "api/json/JsonBase.h"
#include "api/json/JsonTextBuffer.h"
#include "api/json/JsonValue.h"

#include <vector>

namespace orvel {

struct JsonStyle
{
    bool humanReadable = false; // members on lines of their own, two spaces in for each level
    bool sortKeys = false;      // members in the order of their keys instead of the object's own
    qsizetype maxLength = 0;    // about here the text is cut, with "…" behind; 0 for no bound
};

// Writes one tree, without recursion.
class JsonTreeWriter
{
public:
    JsonTreeWriter(JsonStyle style, JsonBase &errors) : m_style(style), m_errors(errors) {}

    // A null text when there is an error.
    QString write(const JsonValue &root);

    // What a foreign object offers to be written, followed through other foreign objects; a foreign object
    // that offers nothing, or only ever another one, is given back. Every other value is itself.
    static JsonValue offeredValue(const JsonValue &value);

private:
    struct Open
    {
        JsonValue container;
        const std::vector<JsonValue> &values;
        const std::vector<QString> *keys; // null for an array
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
