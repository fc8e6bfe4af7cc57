#include "benchmarks/window/Watch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QQuickItem>
#include <QTimer>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace orvel::benchmark {

namespace {

double cpuMs(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

qint64 nowMs()
{
    QElapsedTimer now;
    now.start();
    return now.msecsSinceReference();
}

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

// The rows that the list shows now.
int rowsOf(QQuickItem *list)
{
    int rows = 0;
    for (const QQuickItem *item : list->property("contentItem").value<QQuickItem *>()->childItems())
        rows += item->property("cell").isValid() ? 1 : 0;
    return rows;
}

int anonymousKib()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("RssAnon:") + 8).trimmed().split(' ').value(0).toInt();
}

void print(const char *name, const std::vector<double> &values)
{
    std::printf("\"%s\": [", name);
    for (std::size_t i = 0; i < values.size(); ++i)
        std::printf("%s%.3f", i > 0 ? ", " : "", values[i]);
    std::printf("]");
}

} // namespace

Watch::Watch(QQuickWindow &window, double seconds) : m_window(window), m_seconds(seconds)
{
    connect(&window, &QQuickWindow::beforeRendering, this, &Watch::frameBegins, Qt::DirectConnection);
    connect(&window, &QQuickWindow::afterRendering, this, &Watch::frameDrawn, Qt::DirectConnection);
    connect(&window, &QQuickWindow::frameSwapped, this, &Watch::frameEnds, Qt::DirectConnection);
}

QQuickItem *Watch::list() const { return flickableIn(m_window.contentItem()); }

void Watch::frameBegins() { m_drawBegin = cpuMs(CLOCK_THREAD_CPUTIME_ID); }

void Watch::frameDrawn() { m_drawEnd = cpuMs(CLOCK_THREAD_CPUTIME_ID); }

void Watch::frameEnds()
{
    if (m_first == 0) {
        m_first = nowMs();
        m_firstCpu = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
    }
    if (m_list == 0) {
        if (QQuickItem *const shown = list(); shown && rowsOf(shown) > 0) {
            m_list = nowMs();
            m_listCpu = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
            // The overlay has gone and the first pictures are there by then.
            QTimer::singleShot(1500, this, &Watch::flick);
        }
        return;
    }
    if (!m_flicking)
        return;
    const double end = cpuMs(CLOCK_THREAD_CPUTIME_ID);
    const double drawing = m_drawEnd - m_drawBegin;
    if (m_lastEnd > 0) {
        m_frames.push_back(end - m_lastEnd - drawing);
        m_drawings.push_back(drawing);
    }
    m_lastEnd = end;
}

// As a finger that flicks again whenever the list has slowed down.
void Watch::flick()
{
    if (!m_flicking) {
        m_flicking = true;
        QTimer::singleShot(int(m_seconds * 1000), this, &Watch::finish);
    }
    QQuickItem *const shown = list();
    if (shown && std::abs(shown->property("verticalVelocity").toDouble()) < 300) {
        if (shown->property("atYEnd").toBool())
            m_down = false;
        else if (shown->property("atYBeginning").toBool())
            m_down = true;
        QMetaObject::invokeMethod(shown, "flick", Q_ARG(qreal, 0.0), Q_ARG(qreal, m_down ? -2500.0 : 2500.0));
    }
    QTimer::singleShot(50, this, &Watch::flick);
}

void Watch::finish()
{
    std::printf(
        "{\"first\": %lld, \"list\": %lld, \"firstCpu\": %.1f, \"listCpu\": %.1f, \"anonymous\": %d, ",
        static_cast<long long>(m_first), static_cast<long long>(m_list), m_firstCpu, m_listCpu,
        anonymousKib());
    print("frames", m_frames);
    std::printf(", ");
    print("drawing", m_drawings);
    std::printf("}\n");
    QCoreApplication::exit(0);
}

} // namespace orvel::benchmark
