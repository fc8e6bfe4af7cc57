#include "platform/foundation/BackgroundTask.h"

#include <map>

namespace orvel {

namespace {

struct BackgroundTasks
{
    std::map<quint64, std::function<void()>> running;
    quint64 last = invalidBackgroundTask;
    ApplicationState state = ApplicationState::Active;
};

BackgroundTasks &tasks()
{
    static BackgroundTasks instance;
    return instance;
}

} // namespace

quint64 beginBackgroundTask(std::function<void()> expired)
{
    tasks().running.emplace(++tasks().last, std::move(expired));
    return tasks().last;
}

void endBackgroundTask(quint64 task) { tasks().running.erase(task); }

int backgroundTaskCount() { return int(tasks().running.size()); }

ApplicationState applicationState() { return tasks().state; }

void setApplicationState(ApplicationState state) { tasks().state = state; }

} // namespace orvel
