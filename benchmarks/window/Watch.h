#pragma once

#include "benchmarks/window/Flicking.h"

namespace orvel::benchmark {

// Looks on while the client's window opens and its list appears, then flicks the list up and down, and prints
// all that as one line of JSON: "first" and "list", ms on the system's monotonic clock; "firstCpu" and
// "listCpu", ms of the process until then; "anonymous", KiB at the end; and the frames of the flicking.
class Watch : public QObject
{
public:
    Watch(QQuickWindow &window, double seconds);

private:
    void frameEnds();
    void flick();
    void finish();

    Flicking m_flicking;
    double m_seconds;
    qint64 m_first = 0;
    qint64 m_list = 0;
    double m_firstCpu = 0;
    double m_listCpu = 0;
};

} // namespace orvel::benchmark
