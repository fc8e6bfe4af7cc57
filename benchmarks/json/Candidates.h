#pragma once

#include <QByteArray>
#include <functional>
#include <vector>

namespace orvel::benchmark {

struct Candidate
{
    const char *name;
    // Reads a text and lets the result go; false when the text was refused.
    std::function<bool(const QByteArray &text)> parse;
    // Reads a text once and gives what writes the tree anew at each call and returns how many characters it
    // wrote; no function when the candidate only reads.
    std::function<std::function<qsizetype()>(const QByteArray &text)> writer;
};

// Ours first.
std::vector<Candidate> candidates();

} // namespace orvel::benchmark
