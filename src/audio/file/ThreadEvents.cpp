#include "audio/file/ThreadEvents.h"

#include <algorithm>
#include <cmath>

namespace orvel {

ThreadEvents::ThreadEvents()
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
}

void ThreadEvents::wait(double seconds)
{
    if (m_wasWoken)
        return;
    m_timer.start(std::max(0, int(std::ceil(seconds * 1000))));
    m_loop.processEvents(QEventLoop::WaitForMoreEvents);
}

void ThreadEvents::wake()
{
    m_wasWoken = true;
    m_loop.wakeUp();
}

} // namespace orvel
