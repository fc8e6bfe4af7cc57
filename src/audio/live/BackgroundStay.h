#pragma once

#include "platform/foundation/BackgroundTask.h"

namespace orvel {

// One background task: lets a player go on while its application is out of sight. Main thread.
class BackgroundStay
{
public:
    BackgroundStay() = default;
    ~BackgroundStay() { end(); }
    BackgroundStay(const BackgroundStay &) = delete;
    BackgroundStay &operator=(const BackgroundStay &) = delete;

    // No effect while the application is in front, or when a task is held already.
    void begin();
    void end();

private:
    quint64 m_bgTask = invalidBackgroundTask;
};

} // namespace orvel
