#pragma once

#include "api/json/JsonValue.h"

#include <QHash>
#include <QSharedData>

namespace orvel {

// The keys of an object in order of arrival, each once. Objects with the same keys in the same order may
// share them.
class JsonKeys : public QSharedData
{
public:
    void append(const QString &key);
    void removeAt(qsizetype place);
    // -1 when the key is not there.
    qsizetype indexOf(QStringView key) const;
    const std::vector<QString> &names() const { return m_names; }

private:
    void buildIndex();

    std::vector<QString> m_names;
    QHash<QStringView, qsizetype> m_places; // only of many keys; the views are of m_names' texts
};

// What an array or an object holds, shared by the values that are copies of each other.
struct JsonContainer
{
    std::vector<JsonValue> values;
    QExplicitlySharedDataPointer<JsonKeys> keys; // null for an array

    JsonContainer() = default;
    JsonContainer(const JsonContainer &other) = default;
    JsonContainer &operator=(const JsonContainer &) = delete;
    // Frees a tree of any depth without recursion.
    ~JsonContainer();

    // The place of a key in `values`, or -1.
    qsizetype indexOf(QStringView key) const { return keys ? keys->indexOf(key) : -1; }
    // The keys for changing, no longer shared with another object.
    JsonKeys &changeableKeys();
};

} // namespace orvel
