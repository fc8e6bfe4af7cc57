#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace orvel {

// The header fields of a request or an answer, in order of arrival. Names are compared ignoring case (RFC
// 9110); a later field of the same name replaces an earlier one in its place.
class HeaderFields
{
public:
    struct Field
    {
        QString name; // as received
        QString value;
    };

    void set(const QString &name, const QString &value);
    // Returns std::nullopt without such a field.
    std::optional<QString> value(const QString &name) const;
    const std::vector<Field> &fields() const { return m_fields; }
    void clear() { m_fields.clear(); }

private:
    std::vector<Field> m_fields;
};

} // namespace orvel
