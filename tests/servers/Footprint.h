#pragma once

#include <QtGlobal>

namespace orvel::test {

// What this process holds now, as the kernel counts it.
struct Footprint
{
    static Footprint now();

    qsizetype threads;
    qsizetype descriptors;
    qint64 anonymousBytes; // resident and backed by no file, after the heap was trimmed
};

} // namespace orvel::test
