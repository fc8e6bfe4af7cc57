#pragma once

#include "api/json/JsonValue.h"

#include <QByteArrayView>
#include <QHash>
#include <deque>

namespace orvel {

// The keys met while one input is read. Records repeat their keys in the same order, so each key remembers
// which one came after it, and which set of keys it was the last of: the text of a repeated key is made once,
// and objects of the same form share one set.
class JsonKeyTable
{
public:
    struct Key
    {
        QString text;
        QByteArrayView spelling; // the bytes between the quotes; empty when they hold an escape
        Key *follower = nullptr;
        QExplicitlySharedDataPointer<JsonKeys> lastOf;
        quint64 object = 0; // the object that was gathered last with it, and its place there
        size_t place = 0;
    };

    // Returns the key expected after `previous` (nullptr at an object's start), or nullptr.
    Key *expected(const Key *previous) const { return previous ? previous->follower : m_first; }
    // Returns the key of this text, from now on expected after `previous`.
    Key *enter(const QString &text, QByteArrayView spelling, Key *previous);

    // Returns an object's container of its keys, at least one, and values as they arrived: of a key that came
    // twice the later value stands in the earlier's place.
    std::shared_ptr<JsonContainer> gather(Key *const *keys, JsonValue *values, size_t count);

private:
    static bool hasKeys(const JsonKeys &set, Key *const *keys, size_t count);

    std::deque<Key> m_keys;
    QHash<QStringView, Key *> m_byText;
    Key *m_first = nullptr;
    quint64 m_objects = 0;
};

} // namespace orvel
