#pragma once

#include <QByteArray>
#include <QUrlQuery>

#include <optional>

namespace orvel::demo {

// What a test asks a stream to do wrong, or differently, in the query of its URL. README.md has the table.
struct StreamFaults
{
    enum class Kind { None, Stall, Cut, Reset, Slow, Garbage, Html, Header };

    Kind kind = Kind::None;
    qint64 after = 0;            // body bytes before stall, cut and reset
    std::optional<int> status;   // HTTP status instead of the stream
    std::optional<bool> bareIcy; // the answer's form, whatever the radio's own
    std::optional<QByteArray> contentType;
    std::optional<QByteArray> metadataInterval; // sent as it is
    std::optional<qsizetype> burst;
    std::optional<double> seconds; // of sound, then the stream ends
    std::optional<bool> paced;     // false: as fast as the listener takes it
    qsizetype piece = 0;           // bytes; the size of the pieces in which the answer's head goes out

    static StreamFaults of(const QUrlQuery &query);
};

} // namespace orvel::demo
