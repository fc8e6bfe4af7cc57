#include "api/json/JsonCodec.h"

namespace orvel {

QString JsonCodec::stringWithObject(const JsonValue &value)
{
    return stringWithObject(value, false, nullptr);
}

QString JsonCodec::stringWithObject(const JsonValue &value, bool allowScalar, JsonError *error)
{
    const QString text = allowScalar ? m_writer.stringWithFragment(value) : m_writer.stringWithObject(value);
    takeErrors(text.isNull(), m_writer, error);
    return text;
}

QString JsonCodec::stringWithFragment(const JsonValue &value, JsonError *error)
{
    return stringWithObject(value, true, error);
}

QString JsonCodec::stringWithObject(const JsonValue &value, JsonError *error)
{
    return stringWithObject(value, false, error);
}

JsonValue JsonCodec::objectWithString(const JsonInput &text)
{
    return objectWithString(text, false, nullptr);
}

JsonValue JsonCodec::objectWithString(const JsonInput &text, bool allowScalar, JsonError *error)
{
    const JsonValue value = allowScalar ? m_parser.fragmentWithString(text) : m_parser.objectWithString(text);
    takeErrors(value.isAbsent(), m_parser, error);
    return value;
}

JsonValue JsonCodec::fragmentWithString(const JsonInput &text, JsonError *error)
{
    return objectWithString(text, true, error);
}

JsonValue JsonCodec::objectWithString(const JsonInput &text, JsonError *error)
{
    return objectWithString(text, false, error);
}

void JsonCodec::setMaxDepth(unsigned maxDepth)
{
    JsonBase::setMaxDepth(maxDepth);
    m_writer.setMaxDepth(maxDepth);
    m_parser.setMaxDepth(maxDepth);
}

void JsonCodec::takeErrors(bool hasFailed, const JsonBase &part, JsonError *error)
{
    clearErrorTrace();
    if (!hasFailed)
        return;
    copyErrorTrace(part);
    if (error)
        *error = *errorTrace().back();
}

} // namespace orvel
