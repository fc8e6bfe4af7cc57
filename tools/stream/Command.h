#pragma once

#include "platform/foundation/RunLoop.h"
#include "tools/stream/Arguments.h"
#include "tools/stream/Output.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvel {

// One of the program's commands, at work from start() until it has reported its outcome. Main thread.
class Command
{
public:
    using Finished = std::function<void(const Outcome &)>;

    // `finished` is called once.
    Command(const Arguments &arguments, Output &output, Finished finished);
    virtual ~Command();
    Command(const Command &) = delete;
    Command &operator=(const Command &) = delete;

    virtual void start() = 0;
    // The user sent a signal to end it.
    virtual void interrupt(int signal) { finish(Outcome::interrupted(signal)); }
    bool hasFinished() const { return !m_finished; }

protected:
    const Arguments &arguments() const { return m_arguments; }
    Output &output() { return m_output; }
    // Runs `function` after `seconds`, unless the command is gone. A second call replaces the first.
    void after(double seconds, std::function<void()> function);
    // Calls `passed` when the user's deadline has passed.
    void startDeadline(Finished passed);
    void finish(const Outcome &outcome = {});

private:
    const Arguments m_arguments;
    Output &m_output;
    Finished m_finished;
    RunLoop::Token m_timer = 0;
};

} // namespace orvel
