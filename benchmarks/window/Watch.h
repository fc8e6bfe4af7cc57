#pragma once

#include <QObject>
#include <QQuickWindow>
#include <vector>

namespace orvel::benchmark {

// Looks on while the client's window opens and its list appears, then flicks the list up and down, and prints
// all that as one line of JSON: "first" and "list", ms on the system's monotonic clock; "listCpu", ms of the
// process until then; "anonymous", KiB at the end; "frames", for each frame of the flicking the main thread's
// own CPU ms but for the drawing, and "drawing", those of the drawing.
class Watch : public QObject
{
public:
    Watch(QQuickWindow &window, double seconds);

private:
    void frameBegins();
    void frameDrawn();
    void frameEnds();
    void flick();
    void finish();
    QQuickItem *list() const;

    QQuickWindow &m_window;
    double m_seconds;
    qint64 m_first = 0;
    qint64 m_list = 0;
    double m_firstCpu = 0;
    double m_listCpu = 0;
    bool m_flicking = false;
    bool m_down = true;
    double m_lastEnd = 0; // all of them on the main thread's CPU clock, ms
    double m_drawBegin = 0;
    double m_drawEnd = 0;
    std::vector<double> m_frames;
    std::vector<double> m_drawings;
};

} // namespace orvel::benchmark
