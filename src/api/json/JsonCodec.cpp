#include "api/json/JsonCodec.h"

namespace orvel {

QString JsonCodec::stringWithObject(const JsonValue &value, bool allowScalar, JsonError *error)
{
    const QString text = allowScalar ? m_writer.stringWithFragment(value) : m_writer.stringWithObject(value);
    takeErrors(text.isNull(), m_writer, error);
    return text;
}

JsonValue JsonCodec::objectWithString(const JsonInput &text, bool allowScalar, JsonError *error)
{
    const JsonValue value = allowScalar ? m_parser.fragmentWithString(text) : m_parser.objectWithString(text);
    takeErrors(value.isAbsent(), m_parser, error);
    return value;
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
