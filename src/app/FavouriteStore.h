#pragma once

#include "api/json/JsonValue.h"
#include "platform/foundation/UserDefaults.h"

#include <optional>
#include <vector>

namespace orvel {

// The user's favourite radios, newest first: whole entries of the web-radio list (see WebRadioEntry), kept on
// this device only. Two entries are the same radio when their ids are equal as integers. A change writes all
// of them to disk at once: a process killed at any moment leaves the favourites before it or after it. Main
// thread.
class FavouriteStore
{
public:
    using Radios = std::vector<JsonValue>;

    explicit FavouriteStore(UserDefaults &defaults = UserDefaults::standardUserDefaults())
        : m_defaults(defaults)
    {
    }

    // Returns std::nullopt when none were ever stored. Returns an empty list when what is stored can't be
    // read, and moves that aside, with a line in the log.
    std::optional<Radios> radios() const;
    // Puts a radio first. Drops it, with a line in the log, when all of them would be more than 4 MiB.
    // Deliberate: the first one ever is lost, since there is no list yet to put it into; storing that makes
    // the empty list that keeps the next (FavouriteStoreTest.LosesTheFirstAndKeepsTheNextNewestFirst).
    void add(const JsonValue &radio);
    // Removes the first radio of that id. Writes all of them again also when there is none.
    void remove(qint64 id);

private:
    void store(const std::optional<Radios> &radios);

    UserDefaults &m_defaults;
};

} // namespace orvel
