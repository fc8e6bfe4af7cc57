#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace orvel::fuzz {

// Ends the program, so that libFuzzer keeps the input, when what must hold does not.
void require(bool holds, const char *what);

inline QByteArrayView viewOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

struct HeaderField
{
    QString name;
    QString value;
};

// Takes an answer's head off the front of `input`: header fields, one a line, up to an empty line or the last
// line end.
std::vector<HeaderField> takeHead(QByteArrayView &input);

// A stream together with the chunks in which it arrives: the last bytes of an input are their sizes, taken in
// turn.
class ChunkedInput
{
public:
    using Taker = std::function<void(QByteArrayView chunk)>;

    explicit ChunkedInput(QByteArrayView input);
    QByteArrayView bytes() const { return m_bytes; }

    using Feed = void (ChunkedInput::*)(const Taker &) const;
    // Each hands over bytes() once. A chunk is memory of its own, so that nothing is read behind it
    // unnoticed.
    void takeWhole(const Taker &take) const;
    void takeByteForByte(const Taker &take) const;
    void takeChunks(const Taker &take) const;

    // Requires that `heard(feed)` returns the same for each way to hand bytes() over, and returns it.
    template<class Heard>
    auto sameThroughAnyChunks(const Heard &heard) const
    {
        auto whole = heard(&ChunkedInput::takeWhole);
        require(heard(&ChunkedInput::takeChunks) == whole, "the same comes through any chunks");
        require(heard(&ChunkedInput::takeByteForByte) == whole, "the same comes byte for byte");
        return whole;
    }

private:
    QByteArrayView m_bytes;
    QByteArrayView m_sizes;
};

} // namespace orvel::fuzz
