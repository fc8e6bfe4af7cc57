#include "benchmarks/window/Watch.h"

#include "benchmarks/window/Clocks.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

namespace orvel::benchmark {

namespace {

int anonymousKib()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("RssAnon:") + 8).trimmed().split(' ').value(0).toInt();
}

} // namespace

Watch::Watch(QQuickWindow &window, double seconds) : m_flicking(window), m_seconds(seconds)
{
    connect(&window, &QQuickWindow::frameSwapped, this, &Watch::frameEnds, Qt::DirectConnection);
}

void Watch::frameEnds()
{
    if (m_first == 0) {
        m_first = nowMs();
        m_firstCpu = clockMs(CLOCK_PROCESS_CPUTIME_ID);
    }
    if (m_list > 0 || m_flicking.rows() == 0)
        return;
    m_list = nowMs();
    m_listCpu = clockMs(CLOCK_PROCESS_CPUTIME_ID);
    // The overlay has gone and the first pictures are there by then.
    QTimer::singleShot(1500, this, &Watch::flick);
}

void Watch::flick()
{
    m_flicking.start();
    QTimer::singleShot(int(m_seconds * 1000), this, &Watch::finish);
}

void Watch::finish()
{
    std::printf(
        "{\"first\": %lld, \"list\": %lld, \"firstCpu\": %.1f, \"listCpu\": %.1f, \"anonymous\": %d, ",
        static_cast<long long>(m_first), static_cast<long long>(m_list), m_firstCpu, m_listCpu,
        anonymousKib());
    print(m_flicking.stop());
    std::printf("}\n");
    QCoreApplication::exit(0);
}

} // namespace orvel::benchmark
