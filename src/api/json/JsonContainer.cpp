#include "api/json/JsonContainer.h"

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
        m_places.insert(m_names.back(), static_cast<qsizetype>(m_names.size()) - 1);
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
        m_places.insert(m_names[i], static_cast<qsizetype>(i));
}

qsizetype JsonKeys::indexOf(QStringView key) const
{
    if (!m_places.isEmpty())
        return m_places.value(key, -1);
    const auto found =
        std::find_if(m_names.begin(), m_names.end(), [key](const QString &name) { return key == name; });
    return found == m_names.end() ? -1 : found - m_names.begin();
}

JsonContainer::~JsonContainer()
{
    // Containers are taken out of what is about to be freed, so that no destructor meets another below it.
    std::vector<JsonValue> pending;
    const auto takeContainers = [&pending](std::vector<JsonValue> &from) {
        for (JsonValue &value : from) {
            if (value.isContainer())
                pending.push_back(std::move(value));
        }
    };
    takeContainers(values);
    while (!pending.empty()) {
        const JsonValue last = std::move(pending.back());
        pending.pop_back();
        const auto &container = std::get<JsonValue::Container>(last.m_content);
        if (container.use_count() == 1)
            takeContainers(container->values);
    }
}

JsonKeys &JsonContainer::changeableKeys()
{
    keys.detach();
    return *keys;
}

} // namespace orvel
