#pragma once

#include "api/json/Decimal.h"
#include "api/json/JsonKeys.h"

#include <QString>
#include <concepts>
#include <memory>
#include <variant>
#include <vector>

namespace orvel {

class JsonObjectProxy;
struct JsonContainer;

// A decoded JSON value, or an absent one. Copies share their content until one of them is changed.
// Reading never fails: what is not there, or is asked of another kind, is absent. Copying, comparing and
// freeing need no stack, however deep the tree.
class JsonValue
{
public:
    JsonValue() = default;          // absent
    JsonValue(const QString &text); // a null text is absent
    JsonValue(const char *utf8) : JsonValue(QString::fromUtf8(utf8)) {}
    JsonValue(const Decimal &number) : m_content(number) {}
    template<std::same_as<bool> T>
    JsonValue(T truth) : m_content(truth)
    {
    }
    template<std::integral T>
    requires(!std::same_as<T, bool> && (std::is_signed_v<T> || sizeof(T) < sizeof(qint64)))
        JsonValue(T number)
        : JsonValue(Decimal(qint64(number)))
    {
    }
    static JsonValue null();
    static JsonValue emptyArray();
    static JsonValue emptyObject();
    static JsonValue array(std::vector<JsonValue> elements);
    static JsonValue foreign(std::shared_ptr<const JsonObjectProxy> object);

    JsonValue(const JsonValue &) = default;
    JsonValue(JsonValue &&) = default;
    // Not for what a look-up returns, which is a copy.
    JsonValue &operator=(const JsonValue &) & = default;
    JsonValue &operator=(JsonValue &&) & = default;
    ~JsonValue() = default;

    bool isAbsent() const { return std::holds_alternative<std::monostate>(m_content); }
    bool isNull() const { return std::holds_alternative<Null>(m_content); }
    bool isBool() const { return std::holds_alternative<bool>(m_content); }
    bool isNumber() const { return std::holds_alternative<Decimal>(m_content); }
    bool isString() const { return std::holds_alternative<QString>(m_content); }
    bool isArray() const;
    bool isObject() const;
    bool isContainer() const { return std::holds_alternative<Container>(m_content); }

    // Returns the value under a key of an object, or at a place of an array, or an absent one.
    JsonValue operator[](QStringView key) const;
    JsonValue operator[](const QString &key) const { return (*this)[QStringView(key)]; }
    JsonValue operator[](const char *key) const { return (*this)[QString::fromUtf8(key)]; }
    JsonValue operator[](std::integral auto index) const { return at(qsizetype(index)); }
    bool contains(QStringView key) const;
    // Returns the number of elements or members; 0 for another kind.
    qsizetype size() const { return qsizetype(values().size()); }
    // Returns an array's elements, or an object's values in order of arrival; an empty list for another kind.
    const std::vector<JsonValue> &values() const;
    // Returns an object's keys in order of arrival, one for each of values(); an empty list for another kind.
    const std::vector<QString> &keys() const;

    // Returns the "%@" text: a string itself, a number's plain text, a boolean's "1" or "0", "<null>",
    // "(null)" when absent, a container as readable JSON, cut at about 64 Ki characters.
    QString text() const;
    // Returns a string's text; a null text for another kind.
    QString string() const;
    // Returns a number; 0 for another kind.
    Decimal decimal() const;
    // Returns the leading whole number of a string, a number without its fraction (saturating), 1 or 0 for a
    // boolean, and 0 for another kind.
    qint64 integerValue() const;
    bool boolValue() const { return integerValue() != 0; }
    std::shared_ptr<const JsonObjectProxy> foreignObject() const;

    // Sets an object's member, in its old place when the key is there already. An absent value removes the
    // member. No effect on another kind.
    void set(const QString &key, const JsonValue &value);
    void remove(QStringView key);
    // The same for arrays. An absent value or a place out of range has no effect.
    void append(const JsonValue &value);
    void replace(qsizetype index, const JsonValue &value);
    void removeAt(qsizetype index);

    // Numbers are equal by value, objects whatever the order of their members.
    bool operator==(const JsonValue &other) const;

private:
    friend class JsonTreeReader;
    friend class JsonTreeWriter;
    friend struct JsonContainer;
    struct Null
    {
        bool operator==(const Null &) const = default;
    };
    using Container = std::shared_ptr<JsonContainer>;
    using Content = std::variant<std::monostate, Null, bool, Decimal, QString, Container,
                                 std::shared_ptr<const JsonObjectProxy>>;

    template<typename T>
    JsonValue(std::in_place_type_t<T> kind, T content) : m_content(kind, std::move(content))
    {
    }
    JsonValue at(qsizetype index) const;
    const JsonContainer *container() const;
    JsonContainer *changeable();
    bool equalsScalar(const JsonValue &other) const;

    Content m_content;
};

// What an array or an object holds, shared by the values that are copies of each other.
struct JsonContainer
{
    std::vector<JsonValue> values;
    QExplicitlySharedDataPointer<JsonKeys> keys; // nullptr for an array

    JsonContainer() = default;
    JsonContainer(const JsonContainer &other) = default;
    JsonContainer &operator=(const JsonContainer &) = delete;
    // Frees a tree of any depth without recursion.
    ~JsonContainer();

    // Returns the place of a key in `values`, or -1.
    qsizetype indexOf(QStringView key) const { return keys ? keys->indexOf(key) : -1; }
    // Returns the keys for changing, no longer shared with another object.
    JsonKeys &changeableKeys();
};

} // namespace orvel
