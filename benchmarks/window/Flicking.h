#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QTimer>
#include <vector>

namespace orvel::benchmark {

// What each frame took, ms: of the main thread's CPU time all but the drawing, and the drawing; the time
// since the frame before, and how much of it the thread was ready and had no processor.
struct Frames
{
    std::vector<double> own{};
    std::vector<double> drawing{};
    std::vector<double> between{};
    std::vector<double> waiting{};
};

// As members of a JSON object: "frames", "drawing", "between" and "waiting".
void print(const Frames &frames);

// Flicks the list in a window up and down, as a finger that flicks again whenever it has slowed down, and
// measures the frames meanwhile.
class Flicking : public QObject
{
public:
    explicit Flicking(QQuickWindow &window);

    void start();
    // The frames since the start. The list slows down by itself.
    Frames stop();
    // The rows that the list in the window shows now.
    int rows() const;

private:
    void flick();
    void frameEnds();
    QQuickItem *list() const;

    QQuickWindow &m_window;
    QTimer m_finger;
    bool m_down = true;
    double m_drawBegin = 0; // these on the main thread's CPU clock, ms
    double m_drawEnd = 0;
    double m_lastEnd = 0;
    double m_lastShown = 0;   // on the monotonic clock, ms
    double m_lastWaiting = 0; // ms since the thread's start
    Frames m_frames;
};

} // namespace orvel::benchmark
