#include "api/json/JsonKeys.h"

#include <algorithm>

namespace orvel {

namespace {

// Up to here a walk along the keys is faster than hashing the one that is looked for.
constexpr size_t maxUnindexedKeys = 16;

} // namespace

void JsonKeys::append(const QString &key)
{
    m_names.push_back(key);
    if (!m_places.isEmpty())
        m_places.insert(m_names.back(), qsizetype(m_names.size()) - 1);
    else if (m_names.size() > maxUnindexedKeys)
        buildIndex();
}

void JsonKeys::removeAt(qsizetype place)
{
    m_places.clear();
    m_names.erase(m_names.begin() + place);
    if (m_names.size() > maxUnindexedKeys)
        buildIndex();
}

void JsonKeys::buildIndex()
{
    for (size_t i = 0; i < m_names.size(); ++i)
        m_places.insert(m_names[i], qsizetype(i));
}

qsizetype JsonKeys::indexOf(QStringView key) const
{
    if (!m_places.isEmpty())
        return m_places.value(key, -1);
    const auto found =
        std::find_if(m_names.begin(), m_names.end(), [key](const QString &name) { return key == name; });
    return found == m_names.end() ? -1 : found - m_names.begin();
}

} // namespace orvel
