#pragma once

#include "platform/foundation/Url.h"
#include "tools/stream/Outcome.h"

#include <QStringList>
#include <optional>
#include <variant>

namespace orvel {

// What the command line asks for.
struct Arguments
{
    enum class Task { Help, Version, Resolve, Play, Probe, Record, File };

    Task task = Task::Help;
    std::optional<Url> url{}; // http or https; of every task but the first two
    QString file{};           // where to record
    bool json = false;
    std::optional<double> seconds{};
    std::optional<double> seek{}; // seconds
    std::optional<float> volume{};
    std::optional<unsigned> bufferSeconds{};
    double deadline = 20; // seconds

    // Reads a whole command line, the program's name included. Returns the usage error when it is wrong.
    static std::variant<Arguments, Outcome> of(const QStringList &commandLine);
    static QString help();
};

} // namespace orvel
