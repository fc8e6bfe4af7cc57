#include "api/json/JsonTreeWriter.h"

#include "api/json/JsonObjectProxy.h"
#include "platform/foundation/FormatText.h"

#include <algorithm>
#include <numeric>

namespace orvel {

namespace {

constexpr bool needsEscape(char16_t unit) { return unit < 0x20 || unit == u'"' || unit == u'\\'; }

// Looks at every unit instead of stopping at the first, so that the compiler can take many at a time.
bool holdsEscapes(QStringView text)
{
    bool found = false;
    for (const QChar character : text)
        found |= needsEscape(character.unicode());
    return found;
}

} // namespace

JsonValue JsonTreeWriter::offeredValue(const JsonValue &value)
{
    constexpr int maxSteps = 512;
    JsonValue offered = value;
    for (int step = 0; step < maxSteps; ++step) {
        const auto object = offered.foreignObject();
        JsonValue next = object ? object->proxyForJson() : JsonValue();
        if (next.isAbsent())
            return offered;
        offered = std::move(next);
    }
    return offered;
}

QString JsonTreeWriter::write(const JsonValue &root)
{
    if (writeTree(root))
        return m_text.take();
    addErrorsAround();
    return {};
}

bool JsonTreeWriter::writeTree(const JsonValue &root)
{
    bool isWritten = writeValue(root);
    while (isWritten && !m_open.empty()) {
        if (m_style.maxLength > 0 && m_text.size() > m_style.maxLength) {
            m_text.append(u'…');
            m_open.clear();
        } else if (m_open.back().next < m_open.back().values.size()) {
            isWritten = writeNext();
        } else {
            closeContainer();
        }
    }
    return isWritten;
}

bool JsonTreeWriter::writeValue(const JsonValue &value)
{
    if (const QString *const text = std::get_if<QString>(&value.m_content)) {
        writeString(*text);
    } else if (value.isContainer()) {
        return openContainer(value);
    } else if (const Decimal *const number = std::get_if<Decimal>(&value.m_content)) {
        const Decimal::PlainText digits = number->plainText();
        m_text.appendLatin1(digits.data(), digits.size());
    } else if (value.isBool()) {
        m_text.append(value.boolValue() ? u"true" : u"false");
    } else if (value.isNull()) {
        m_text.append(u"null");
    } else {
        return writeOffered(offeredValue(value));
    }
    return true;
}

bool JsonTreeWriter::writeOffered(const JsonValue &value)
{
    const auto object = value.foreignObject();
    if (!value.isAbsent() && !object)
        return writeValue(value);
    m_errors.addErrorWithCode(JsonError::Unsupported,
                              QStringLiteral("JSON serialisation not supported for ") +
                                  (object ? object->className() : absentText));
    return false;
}

bool JsonTreeWriter::openContainer(const JsonValue &container)
{
    if (!m_errors.mayOpen(m_open.size()))
        return false;
    const std::vector<QString> &keys = container.keys();
    const bool isObject = container.isObject();
    Open &open = m_open.emplace_back(Open{container, container.values(), isObject ? &keys : nullptr});
    if (m_style.sortKeys) {
        open.order.resize(keys.size());
        std::iota(open.order.begin(), open.order.end(), size_t(0));
        std::sort(open.order.begin(), open.order.end(),
                  [&keys](size_t a, size_t b) { return keys[a].compare(keys[b]) < 0; });
    }
    m_text.append(isObject ? u'{' : u'[');
    return true;
}

bool JsonTreeWriter::writeNext()
{
    Open &open = m_open.back();
    if (open.next > 0)
        m_text.append(u',');
    breakLine();
    const size_t place = open.place(open.next++);
    if (open.keys) {
        writeString((*open.keys)[place]);
        m_text.append(m_style.humanReadable ? QStringView(u" : ") : QStringView(u":"));
    }
    return writeValue(open.values[place]);
}

void JsonTreeWriter::closeContainer()
{
    const bool isEmpty = m_open.back().values.empty();
    const bool isObject = m_open.back().keys;
    m_open.pop_back();
    if (!isEmpty)
        breakLine();
    m_text.append(isObject ? u'}' : u']');
}

void JsonTreeWriter::breakLine()
{
    if (!m_style.humanReadable)
        return;
    m_text.append(u'\n');
    m_text.fill(u' ', 2 * qsizetype(m_open.size()));
}

void JsonTreeWriter::writeString(QStringView text)
{
    m_text.append(u'"');
    if (!holdsEscapes(text)) {
        m_text.append(text);
    } else {
        for (const QChar character : text)
            writeEscaped(character.unicode());
    }
    m_text.append(u'"');
}

void JsonTreeWriter::writeEscaped(char16_t unit)
{
    switch (unit) {
    case u'"':
        return m_text.append(u"\\\"");
    case u'\\':
        return m_text.append(u"\\\\");
    case u'\b':
        return m_text.append(u"\\b");
    case u'\t':
        return m_text.append(u"\\t");
    case u'\n':
        return m_text.append(u"\\n");
    case u'\f':
        return m_text.append(u"\\f");
    case u'\r':
        return m_text.append(u"\\r");
    default:
        if (unit >= 0x20)
            return m_text.append(unit);
        m_text.append(QStringLiteral("\\u%1").arg(unit, 4, 16, QLatin1Char('0')));
    }
}

void JsonTreeWriter::addErrorsAround()
{
    for (; !m_open.empty(); m_open.pop_back()) {
        const Open &open = m_open.back();
        if (open.keys)
            m_errors.addErrorWithCode(JsonError::Unsupported,
                                      QStringLiteral("Unsupported value for key %1 in object")
                                          .arg((*open.keys)[open.place(open.next - 1)]));
    }
}

} // namespace orvel
