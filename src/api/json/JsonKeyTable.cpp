#include "api/json/JsonKeyTable.h"

#include <iterator>

namespace orvel {

JsonKeyTable::Key *JsonKeyTable::enter(const QString &text, QByteArrayView spelling, Key *previous)
{
    Key *key = m_byText.value(text);
    if (!key) {
        key = &m_keys.emplace_back();
        key->text = text;
        key->spelling = spelling;
        m_byText.insert(key->text, key);
    }
    (previous ? previous->follower : m_first) = key;
    return key;
}

bool JsonKeyTable::hasKeys(const JsonKeys &set, Key *const *keys, size_t count)
{
    const auto &names = set.names();
    if (names.size() != count)
        return false;
    for (size_t i = 0; i < count; ++i) {
        if (names[i].constData() != keys[i]->text.constData())
            return false;
    }
    return true;
}

std::shared_ptr<JsonContainer> JsonKeyTable::gather(Key *const *keys, JsonValue *values, size_t count)
{
    auto container = std::make_shared<JsonContainer>();
    Key *const last = keys[count - 1];
    if (last->lastOf && hasKeys(*last->lastOf, keys, count)) {
        container->keys = last->lastOf;
        container->values.assign(std::make_move_iterator(values), std::make_move_iterator(values + count));
        return container;
    }

    container->keys.reset(new JsonKeys);
    container->values.reserve(count);
    ++m_objects;
    for (size_t i = 0; i < count; ++i) {
        Key &key = *keys[i];
        if (key.object == m_objects) {
            container->values[key.place] = std::move(values[i]);
            continue;
        }
        key.object = m_objects;
        key.place = container->values.size();
        container->keys->append(key.text);
        container->values.push_back(std::move(values[i]));
    }
    last->lastOf = container->keys;
    return container;
}

} // namespace orvel
