#include "api/json/JsonTreeReader.h"

#include <iterator>

namespace orvel {

JsonTreeReader::JsonTreeReader(QByteArrayView utf8, JsonBase &errors)
    : m_scanner(utf8, errors), m_errors(errors)
{
    // Room for a flat list of short values; memory that stays untouched costs nothing.
    constexpr qsizetype shortValue = 8;
    m_values.reserve(size_t(utf8.size() / shortValue + 1));
}

JsonValue JsonTreeReader::read()
{
    if (!readTree())
        return {};
    m_scanner.skipSpace();
    if (!m_scanner.isAtEnd()) {
        m_errors.addErrorWithCode(JsonError::TrailingGarbage, QStringLiteral("Garbage after JSON"));
        return {};
    }
    return std::move(m_values.back());
}

bool JsonTreeReader::readTree()
{
    Next next = Next::Value;
    while (next != Next::Failed) {
        if (next == Next::Value)
            next = readValue();
        else if (m_open.empty())
            return true;
        else
            next = readBehindItem(m_open.back().isObject);
    }
    return false;
}

JsonTreeReader::Next JsonTreeReader::readValue()
{
    m_scanner.skipSpace();
    const char byte = m_scanner.peek();
    switch (byte) {
    case '"':
        m_scanner.skip();
        return m_scanner.readString(m_values.emplace_back().m_content.emplace<QString>()) ? Next::BehindValue
                                                                                          : failValue();
    case '{':
    case '[':
        m_scanner.skip();
        return openContainer(byte == '{');
    case 't':
        return readWord("rue", true, QStringLiteral("Expected 'true'"));
    case 'f':
        return readWord("alse", false, QStringLiteral("Expected 'false'"));
    case 'n':
        return readWord("ull", JsonValue::null(), QStringLiteral("Expected 'null'"));
    case '+':
        return failValue(JsonError::BadNumber, QStringLiteral("Leading + disallowed in number"));
    case '\0':
        return failValue(JsonError::EndOfInput, QStringLiteral("Unexpected end of string"));
    default:
        if (byte != '-' && (byte < '0' || byte > '9'))
            return failValue(JsonError::BadSyntax, QStringLiteral("Unrecognised leading character"));
        return m_scanner.readNumber(m_values.emplace_back().m_content.emplace<Decimal>()) ? Next::BehindValue
                                                                                          : failValue();
    }
}

JsonTreeReader::Next JsonTreeReader::readWord(QByteArrayView rest, const JsonValue &value,
                                              const QString &description)
{
    m_scanner.skip();
    if (!m_scanner.skipIf(rest))
        return failValue(JsonError::BadSyntax, description);
    m_values.push_back(value);
    return Next::BehindValue;
}

JsonTreeReader::Next JsonTreeReader::openContainer(bool isObject)
{
    if (!m_errors.mayOpen(m_open.size()))
        return failValue();
    m_open.push_back({isObject, m_values.size(), m_keys.size()});
    m_scanner.skipSpace();
    if (m_scanner.skipIf(isObject ? '}' : ']'))
        return closeContainer();
    return readItem(isObject);
}

JsonTreeReader::Next JsonTreeReader::readItem(bool isObject)
{
    return isObject ? readMember() : readElement();
}

JsonTreeReader::Next JsonTreeReader::readElement()
{
    if (m_scanner.isAtEnd())
        return failContainer(JsonError::EndOfInput, QStringLiteral("End of input while parsing array"));
    return Next::Value;
}

JsonTreeReader::Next JsonTreeReader::readMember()
{
    if (m_scanner.isAtEnd())
        return failContainer(JsonError::EndOfInput, QStringLiteral("End of input while parsing object"));
    if (!m_scanner.skipIf('"') || !readKey())
        return failContainer(JsonError::BadSyntax, QStringLiteral("Object key string expected"));
    m_scanner.skipSpace();
    if (!m_scanner.skipIf(':'))
        return failContainer(JsonError::BadSyntax, QStringLiteral("Expected ':' separating key and value"));
    return Next::Value;
}

bool JsonTreeReader::readKey()
{
    JsonKeyTable::Key *const previous = m_keys.size() > m_open.back().firstKey ? m_keys.back() : nullptr;
    JsonKeyTable::Key *const expected = m_table.expected(previous);
    if (expected && !expected->spelling.isEmpty() && m_scanner.skipQuoted(expected->spelling)) {
        m_keys.push_back(expected);
        return true;
    }

    const char *const start = m_scanner.position();
    QString text;
    if (!m_scanner.readString(text))
        return false;
    QByteArrayView spelling(start, m_scanner.position() - 1);
    if (spelling.contains('\\'))
        spelling = {};
    m_keys.push_back(m_table.enter(text, spelling, previous));
    return true;
}

JsonTreeReader::Next JsonTreeReader::readBehindItem(bool isObject)
{
    const char end = isObject ? '}' : ']';
    m_scanner.skipSpace();
    if (m_scanner.skipIf(',')) {
        m_scanner.skipSpace();
        if (m_scanner.peek() == end)
            return failContainer(JsonError::TrailingComma,
                                 isObject ? QStringLiteral("Trailing comma disallowed in object")
                                          : QStringLiteral("Trailing comma disallowed in array"));
        return readItem(isObject);
    }
    if (m_scanner.skipIf(end))
        return closeContainer();
    // Without a comma nothing more can come, at the end or before it.
    if (m_scanner.isAtEnd())
        return readItem(isObject);
    return failContainer(JsonError::BadSyntax, isObject
                                                   ? QStringLiteral("Object key string expected")
                                                   : QStringLiteral("Expected value while parsing array"));
}

JsonTreeReader::Next JsonTreeReader::closeContainer()
{
    const Open open = m_open.back();
    JsonValue::Container container;
    if (m_keys.size() > open.firstKey) {
        container =
            m_table.gather(&m_keys[open.firstKey], &m_values[open.firstValue], m_keys.size() - open.firstKey);
    } else {
        container = std::make_shared<JsonContainer>();
        if (open.isObject)
            container->keys.reset(new JsonKeys);
        takeValues(open.firstValue, container->values);
    }
    leaveContainer();
    m_values.emplace_back().m_content = std::move(container);
    return Next::BehindValue;
}

void JsonTreeReader::takeValues(size_t first, std::vector<JsonValue> &values)
{
    if (first == 0 && m_values.size() > m_values.capacity() / 2) {
        values.swap(m_values);
        return;
    }
    const auto begin = m_values.begin() + ptrdiff_t(first);
    values.assign(std::make_move_iterator(begin), std::make_move_iterator(m_values.end()));
}

void JsonTreeReader::leaveContainer()
{
    m_keys.resize(m_open.back().firstKey);
    m_values.resize(m_open.back().firstValue);
    m_open.pop_back();
}

JsonTreeReader::Next JsonTreeReader::failValue()
{
    while (!m_open.empty()) {
        if (m_open.back().isObject)
            m_errors.addErrorWithCode(JsonError::BadSyntax,
                                      QStringLiteral("Object value expected for key: ") +
                                          m_keys.back()->text);
        else
            m_errors.addErrorWithCode(JsonError::BadSyntax,
                                      QStringLiteral("Expected value while parsing array"));
        leaveContainer();
    }
    return Next::Failed;
}

JsonTreeReader::Next JsonTreeReader::failValue(int code, const QString &description)
{
    m_errors.addErrorWithCode(code, description);
    return failValue();
}

JsonTreeReader::Next JsonTreeReader::failContainer(int code, const QString &description)
{
    m_errors.addErrorWithCode(code, description);
    leaveContainer();
    return failValue();
}

} // namespace orvel
