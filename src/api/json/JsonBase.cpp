#include "api/json/JsonBase.h"

namespace orvel {

JsonBase::~JsonBase() = default;

void JsonBase::addErrorWithCode(int code, const QString &description)
{
    m_errorTrace.push_back(std::make_shared<const JsonError>(
        code, description, m_errorTrace.empty() ? nullptr : m_errorTrace.back()));
    if (m_observer)
        m_observer();
}

void JsonBase::clearErrorTrace()
{
    if (m_errorTrace.empty())
        return;
    m_errorTrace.clear();
    if (m_observer)
        m_observer();
}

bool JsonBase::mayOpen(size_t depth)
{
    if (m_maxDepth == 0 || depth < m_maxDepth)
        return true;
    addErrorWithCode(JsonError::TooDeep, QStringLiteral("Nested too deep"));
    return false;
}

void JsonBase::copyErrorTrace(const JsonBase &other)
{
    m_errorTrace = other.m_errorTrace;
    if (m_observer)
        m_observer();
}

} // namespace orvel
