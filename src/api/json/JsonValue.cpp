#include "api/json/JsonValue.h"

#include "platform/foundation/ByteText.h"

#include <utility>

namespace orvel {

JsonValue::JsonValue(const QString &text)
{
    if (!text.isNull())
        m_content = text;
}

JsonValue JsonValue::null() { return JsonValue(std::in_place_type<Null>, Null()); }

JsonValue JsonValue::emptyArray() { return array({}); }

JsonValue JsonValue::array(std::vector<JsonValue> elements)
{
    std::erase_if(elements, [](const JsonValue &element) { return element.isAbsent(); });
    auto container = std::make_shared<JsonContainer>();
    container->values = std::move(elements);
    return JsonValue(std::in_place_type<Container>, std::move(container));
}

JsonValue JsonValue::emptyObject()
{
    auto container = std::make_shared<JsonContainer>();
    container->keys.reset(new JsonKeys);
    return JsonValue(std::in_place_type<Container>, std::move(container));
}

JsonValue JsonValue::foreign(std::shared_ptr<const JsonObjectProxy> object)
{
    if (!object)
        return {};
    return JsonValue(std::in_place_type<std::shared_ptr<const JsonObjectProxy>>, std::move(object));
}

const JsonContainer *JsonValue::container() const
{
    const Container *const held = std::get_if<Container>(&m_content);
    return held ? held->get() : nullptr;
}

JsonContainer *JsonValue::changeable()
{
    Container *const held = std::get_if<Container>(&m_content);
    if (!held)
        return nullptr;
    if (held->use_count() > 1)
        *held = std::make_shared<JsonContainer>(**held);
    return held->get();
}

bool JsonValue::isArray() const { return isContainer() && !container()->keys; }
bool JsonValue::isObject() const { return isContainer() && container()->keys; }

JsonValue JsonValue::operator[](QStringView key) const
{
    return isObject() ? at(container()->indexOf(key)) : JsonValue();
}

JsonValue JsonValue::at(qsizetype index) const
{
    return index >= 0 && index < size() ? values()[size_t(index)] : JsonValue();
}

bool JsonValue::contains(QStringView key) const { return isObject() && container()->indexOf(key) >= 0; }

const std::vector<JsonValue> &JsonValue::values() const
{
    static const std::vector<JsonValue> none;
    return isContainer() ? container()->values : none;
}

const std::vector<QString> &JsonValue::keys() const
{
    static const std::vector<QString> none;
    return isObject() ? container()->keys->names() : none;
}

QString JsonValue::string() const
{
    const QString *const text = std::get_if<QString>(&m_content);
    return text ? *text : QString();
}

Decimal JsonValue::decimal() const
{
    const Decimal *const number = std::get_if<Decimal>(&m_content);
    return number ? *number : Decimal();
}

qint64 JsonValue::integerValue() const
{
    if (const bool *const truth = std::get_if<bool>(&m_content))
        return *truth ? 1 : 0;
    return orvel::integerValue(isNumber() ? decimal().stringValue() : string());
}

std::shared_ptr<const JsonObjectProxy> JsonValue::foreignObject() const
{
    const auto *const object = std::get_if<std::shared_ptr<const JsonObjectProxy>>(&m_content);
    return object ? *object : nullptr;
}

void JsonValue::set(const QString &key, const JsonValue &value)
{
    if (value.isAbsent())
        return remove(key);
    if (!isObject())
        return;
    // Kept first: `value` may be a part of what is changed.
    JsonValue kept = value;
    JsonContainer &object = *changeable();
    const qsizetype place = object.indexOf(key);
    if (place >= 0) {
        object.values[size_t(place)] = std::move(kept);
    } else {
        object.changeableKeys().append(key);
        object.values.push_back(std::move(kept));
    }
}

void JsonValue::remove(QStringView key)
{
    if (!contains(key))
        return;
    JsonContainer &object = *changeable();
    const qsizetype place = object.indexOf(key);
    object.changeableKeys().removeAt(place);
    object.values.erase(object.values.begin() + place);
}

void JsonValue::append(const JsonValue &value)
{
    if (!isArray() || value.isAbsent())
        return;
    JsonValue kept = value;
    changeable()->values.push_back(std::move(kept));
}

void JsonValue::replace(qsizetype index, const JsonValue &value)
{
    if (!isArray() || value.isAbsent() || index < 0 || index >= size())
        return;
    JsonValue kept = value;
    changeable()->values[size_t(index)] = std::move(kept);
}

void JsonValue::removeAt(qsizetype index)
{
    if (!isArray() || index < 0 || index >= size())
        return;
    auto &elements = changeable()->values;
    elements.erase(elements.begin() + index);
}

bool JsonValue::equalsScalar(const JsonValue &other) const
{
    return !isContainer() && !other.isContainer() && m_content == other.m_content;
}

bool JsonValue::operator==(const JsonValue &other) const
{
    std::vector<std::pair<const JsonValue *, const JsonValue *>> pending{{this, &other}};
    while (!pending.empty()) {
        const auto [a, b] = pending.back();
        pending.pop_back();
        const JsonContainer *const left = a->container();
        const JsonContainer *const right = b->container();
        if (!left || !right) {
            if (!a->equalsScalar(*b))
                return false;
            continue;
        }
        if (left == right)
            continue;
        if (a->isObject() != b->isObject() || left->values.size() != right->values.size())
            return false;
        for (size_t i = 0; i < left->values.size(); ++i) {
            const qsizetype place = left->keys ? right->indexOf(left->keys->names()[i]) : qsizetype(i);
            if (place < 0)
                return false;
            pending.emplace_back(&left->values[i], &right->values[size_t(place)]);
        }
    }
    return true;
}

JsonContainer::~JsonContainer()
{
    // Containers are taken out of what is about to be freed, so that no destructor meets another below it.
    std::vector<JsonValue::Container> pending;
    const auto takeContainers = [&pending](std::vector<JsonValue> &from) {
        for (JsonValue &value : from) {
            auto *const container = std::get_if<JsonValue::Container>(&value.m_content);
            if (container && *container) // or taken already
                pending.push_back(std::move(*container));
        }
    };
    takeContainers(values);
    while (!pending.empty()) {
        const JsonValue::Container last = std::move(pending.back());
        pending.pop_back();
        if (last.use_count() == 1)
            takeContainers(last->values);
    }
}

JsonKeys &JsonContainer::changeableKeys()
{
    keys.detach();
    return *keys;
}

} // namespace orvel
