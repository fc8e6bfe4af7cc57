#pragma once

#include <QElapsedTimer>
#include <ctime>

namespace orvel::benchmark {

inline double clockMs(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// On the system's monotonic clock.
inline qint64 nowMs()
{
    QElapsedTimer now;
    now.start();
    return now.msecsSinceReference();
}

} // namespace orvel::benchmark
