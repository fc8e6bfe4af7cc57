#pragma once

#include <QByteArray>

namespace orvel::benchmark {

// About 1 MB as stations' APIs answer: records of the same form with French texts in UTF-8, HTML bodies,
// escaped slashes and quotes, numbers as texts. The same bytes every time.
QByteArray apiPayload();

// About 10 MB of numbers: rows of whole numbers, decimals and exponents. The same bytes every time.
QByteArray numberPayload();

} // namespace orvel::benchmark
