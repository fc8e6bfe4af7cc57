#include "audio/live/BackgroundStay.h"

#include <utility>

namespace orvel {

void BackgroundStay::begin()
{
    if (m_bgTask == invalidBackgroundTask && applicationState() != ApplicationState::Active)
        m_bgTask = beginBackgroundTask([this] { end(); });
}

void BackgroundStay::end()
{
    if (m_bgTask != invalidBackgroundTask)
        endBackgroundTask(std::exchange(m_bgTask, invalidBackgroundTask));
}

} // namespace orvel
