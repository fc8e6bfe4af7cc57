#pragma once

#include <QtGlobal>
#include <functional>

namespace orvel {

inline constexpr quint64 invalidBackgroundTask = 0;

// Asks the system to let the application go on in the background until the task has ended; `expired` runs on
// the main queue when the system's patience ends first. Desktops let everything run on: there a task is only
// counted. Main thread.
quint64 beginBackgroundTask(std::function<void()> expired);
void endBackgroundTask(quint64 task);
int backgroundTaskCount();

enum class ApplicationState { Active, Inactive, Background };
// As last told by the shell.
ApplicationState applicationState();
void setApplicationState(ApplicationState state);

} // namespace orvel
