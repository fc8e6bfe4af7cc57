#pragma once

#include <QtGlobal>
#include <functional>

namespace orvel {

inline constexpr quint64 invalidBackgroundTask = 0;

// Asks the system to let the application go on in the background until the task has ended. Returns the task's
// number. `expired` runs on the main queue when the system takes the time back first; a desktop never does,
// so there a task is only counted. Main thread.
quint64 beginBackgroundTask(std::function<void()> expired);
// An unknown task has no effect.
void endBackgroundTask(quint64 task);
// The tasks that have not ended.
int backgroundTaskCount();

enum class ApplicationState { Active, Inactive, Background };
// As the shell set it last.
ApplicationState applicationState();
void setApplicationState(ApplicationState state);

} // namespace orvel
