#include "tools/stream/Command.h"

#include <utility>

namespace orvel {

Command::Command(const Arguments &arguments, Output &output, Finished finished)
    : m_arguments(arguments), m_output(output), m_finished(std::move(finished))
{
}

Command::~Command() { RunLoop::main().cancel(m_timer); }

void Command::after(double seconds, std::function<void()> function)
{
    RunLoop::main().cancel(m_timer);
    m_timer = RunLoop::main().after(seconds, std::move(function), RunLoop::Lane::Service);
}

void Command::startDeadline(Finished passed)
{
    after(m_arguments.deadline, [this, passed = std::move(passed)] {
        const QString sentence = QStringLiteral("There was no complete answer within %1 s.");
        passed(Outcome::failure(ExitCode::TimedOut, sentence.arg(m_arguments.deadline)));
    });
}

void Command::finish(const Outcome &outcome)
{
    if (const Finished finished = std::exchange(m_finished, nullptr))
        finished(outcome);
}

} // namespace orvel
