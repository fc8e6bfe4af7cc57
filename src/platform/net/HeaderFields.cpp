#include "platform/net/HeaderFields.h"

#include "platform/foundation/ByteText.h"

#include <algorithm>

namespace orvel {

void HeaderFields::set(const QString &name, const QString &value)
{
    const auto same = std::find_if(m_fields.begin(), m_fields.end(),
                                   [&](const Field &field) { return equalsIgnoringCase(field.name, name); });
    if (same != m_fields.end())
        *same = {name, value};
    else
        m_fields.push_back({name, value});
}

std::optional<QString> HeaderFields::value(const QString &name) const
{
    const auto found = std::find_if(m_fields.begin(), m_fields.end(),
                                    [&](const Field &field) { return equalsIgnoringCase(field.name, name); });
    return found == m_fields.end() ? std::nullopt : std::optional(found->value);
}

} // namespace orvel
