#pragma once

#include "api/json/JsonValue.h"

#include <QString>
#include <utility>
#include <vector>

namespace orvel {

// What the program says. Results go to stdout, one a line and at once, for people or as JSON; everything else
// goes to stderr.
class Output
{
public:
    // An absent value is left out.
    using Fields = std::vector<std::pair<QString, JsonValue>>;

    // Returns the number of seconds in whole milliseconds.
    static JsonValue seconds(double seconds);

    explicit Output(bool json) : m_json(json) {}

    bool isJson() const { return m_json; }
    void text(const QString &text) { write(text); }
    // Writes an event `seconds` after the start.
    void event(double seconds, const QString &name, const Fields &fields);
    // Writes several results: one object, or a line for each.
    void results(const Fields &fields);
    // Writes the only result. For people it stands alone, so that a shell can take it as it is.
    void result(const QString &key, const QString &value);
    // True when stdout could not be written.
    bool hasFailed() const { return m_failed; }

    static void complain(const QString &sentence);

private:
    void write(const QString &line);

    const bool m_json;
    bool m_failed = false;
};

} // namespace orvel
