#pragma once

#include "api/json/JsonValue.h"
#include "platform/foundation/UserDefaults.h"

#include <optional>
#include <vector>

namespace orvel {

// The user's favourite radios, newest first: whole entries of the web-radio list, kept on this device only.
// Two entries are the same radio when their "id" values are equal as integers. Every change rewrites all of
// them at once and through to disk, so a process killed at any moment leaves the favourites before or after
// it. Main thread.
class FavouriteStore
{
public:
    using Radios = std::vector<JsonValue>;

    explicit FavouriteStore(UserDefaults &defaults = UserDefaults::standardUserDefaults())
        : m_defaults(defaults)
    {
    }

    // Nothing when none were ever stored. What is stored but can't be read counts as no favourites; it is
    // moved aside, with a line in the log.
    std::optional<Radios> radios() const;
    // Puts a radio first. Where none were ever stored it is lost: there is no list yet to put it into, and
    // storing that makes the empty one that the next is kept in. One that would make all of them more than
    // 4 MiB is lost, too, with a line in the log.
    void add(const JsonValue &radio);
    // Takes the first radio of that id away, if there is one.
    void remove(qint64 id);

private:
    void store(const std::optional<Radios> &radios);

    UserDefaults &m_defaults;
};

} // namespace orvel
