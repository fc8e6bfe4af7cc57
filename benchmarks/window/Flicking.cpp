#include "benchmarks/window/Flicking.h"

#include "benchmarks/window/Clocks.h"

#include <QFile>
#include <QQuickItem>
#include <cmath>
#include <cstdio>
#include <utility>

namespace orvel::benchmark {

namespace {

QQuickItem *flickableIn(QQuickItem *item)
{
    if (item->inherits("QQuickFlickable") && item->isVisible())
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = flickableIn(child))
            return found;
    }
    return nullptr;
}

// How long the calling thread has been ready to run without a processor, as the kernel counts.
double waitingMs()
{
    QFile counts(QStringLiteral("/proc/thread-self/schedstat"));
    if (!counts.open(QIODevice::ReadOnly))
        return 0;
    return counts.readAll().split(' ').value(1).toDouble() / 1e6;
}

void print(const char *name, const std::vector<double> &values)
{
    std::printf("\"%s\": [", name);
    for (std::size_t i = 0; i < values.size(); ++i)
        std::printf("%s%.3f", i > 0 ? ", " : "", values[i]);
    std::printf("]");
}

} // namespace

void print(const Frames &frames)
{
    print("frames", frames.own);
    std::printf(", ");
    print("drawing", frames.drawing);
    std::printf(", ");
    print("between", frames.between);
    std::printf(", ");
    print("waiting", frames.waiting);
}

Flicking::Flicking(QQuickWindow &window) : m_window(window)
{
    m_finger.setInterval(50);
    connect(&m_finger, &QTimer::timeout, this, &Flicking::flick);
    const auto atOnce = Qt::DirectConnection;
    connect(
        &window, &QQuickWindow::beforeRendering, this,
        [this] { m_drawBegin = clockMs(CLOCK_THREAD_CPUTIME_ID); }, atOnce);
    connect(
        &window, &QQuickWindow::afterRendering, this,
        [this] { m_drawEnd = clockMs(CLOCK_THREAD_CPUTIME_ID); }, atOnce);
    connect(&window, &QQuickWindow::frameSwapped, this, &Flicking::frameEnds, atOnce);
}

void Flicking::start()
{
    m_lastEnd = 0;
    m_frames = {};
    m_finger.start();
    flick();
}

Frames Flicking::stop()
{
    m_finger.stop();
    return std::exchange(m_frames, {});
}

int Flicking::rows() const
{
    const QQuickItem *const shown = list();
    if (!shown)
        return 0;
    int rows = 0;
    for (const QQuickItem *item : shown->property("contentItem").value<QQuickItem *>()->childItems())
        rows += item->property("cell").isValid() ? 1 : 0;
    return rows;
}

QQuickItem *Flicking::list() const { return flickableIn(m_window.contentItem()); }

void Flicking::frameEnds()
{
    if (!m_finger.isActive())
        return;
    const double end = clockMs(CLOCK_THREAD_CPUTIME_ID);
    const double shown = clockMs(CLOCK_MONOTONIC);
    const double drawing = m_drawEnd - m_drawBegin;
    const double waiting = waitingMs();
    if (m_lastEnd > 0) {
        m_frames.own.push_back(end - m_lastEnd - drawing);
        m_frames.drawing.push_back(drawing);
        m_frames.between.push_back(shown - m_lastShown);
        m_frames.waiting.push_back(waiting - m_lastWaiting);
    }
    m_lastEnd = end;
    m_lastShown = shown;
    m_lastWaiting = waiting;
}

void Flicking::flick()
{
    QQuickItem *const shown = list();
    if (!shown || std::abs(shown->property("verticalVelocity").toDouble()) >= 300)
        return;
    if (shown->property("atYEnd").toBool())
        m_down = false;
    else if (shown->property("atYBeginning").toBool())
        m_down = true;
    QMetaObject::invokeMethod(shown, "flick", Q_ARG(qreal, 0.0), Q_ARG(qreal, m_down ? -2500.0 : 2500.0));
}

} // namespace orvel::benchmark
