#include "platform/foundation/MainQueue.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/net/UrlConnection.h"
#include "tools/stream/FileCommand.h"
#include "tools/stream/PlayCommand.h"
#include "tools/stream/ProbeCommand.h"
#include "tools/stream/RecordCommand.h"
#include "tools/stream/ResolveCommand.h"
#include "tools/stream/Signals.h"

#include <QCoreApplication>
#include <csignal>
#include <cstdio>

using namespace orvel;

namespace {

std::shared_ptr<Command> commandFor(const Arguments &arguments, Output &output, Command::Finished finished)
{
    switch (arguments.task) {
    case Arguments::Task::Resolve:
        return std::make_shared<ResolveCommand>(arguments, output, std::move(finished));
    case Arguments::Task::Play:
        return std::make_shared<PlayCommand>(arguments, output, std::move(finished));
    case Arguments::Task::Probe:
        return std::make_shared<ProbeCommand>(arguments, output, std::move(finished));
    case Arguments::Task::Record:
        return std::make_shared<RecordCommand>(arguments, output, std::move(finished));
    case Arguments::Task::File:
        return std::make_shared<FileCommand>(arguments, output, std::move(finished));
    case Arguments::Task::Help:
    case Arguments::Task::Version:
        break;
    }
    return nullptr;
}

// Runs the command on the event loop until it has ended or the user has had enough, and takes everything
// apart.
Outcome run(const Arguments &arguments, Output &output)
{
    MainQueue::open();
    RunLoop::main();
    Outcome outcome;
    {
        const std::shared_ptr<Command> command = commandFor(arguments, output, [&](const Outcome &how) {
            outcome = how;
            QCoreApplication::quit();
        });
        const Signals interruptions([&](int signal) { command->interrupt(signal); });
        MainQueue::async([&] {
            if (!command->hasFinished()) // by a signal that came first
                command->start();
        });
        QCoreApplication::exec();
    }
    joinOutputQueues();
    closeConnections();
    SerialQueue::joinThreads();
    MainQueue::close();
    return outcome;
}

} // namespace

int main(int argc, char *argv[])
{
    keepOneHeap();
    // Turns of Qt's own event loop cost less than those of GLib's, which nothing here needs.
    qputenv("QT_NO_GLIB", "1");
    // A server or a reader of stdout that has left is told by the write itself.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvel-stream"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEL_VERSION));

    const std::variant<Arguments, Outcome> read = Arguments::of(QCoreApplication::arguments());
    Outcome outcome;
    if (const Arguments *arguments = std::get_if<Arguments>(&read)) {
        Output output(arguments->json);
        if (arguments->task == Arguments::Task::Help)
            output.text(Arguments::help());
        else if (arguments->task == Arguments::Task::Version)
            output.text(QStringLiteral("orvel-stream " ORVEL_VERSION));
        else
            outcome = run(*arguments, output);
        if (output.hasFailed() && outcome.exitStatus == int(ExitCode::Done))
            outcome = Outcome::failure(ExitCode::CannotWrite, QStringLiteral("stdout can't be written."));
    } else {
        outcome = std::get<Outcome>(read);
    }
    if (!outcome.sentence.isEmpty())
        Output::complain(outcome.sentence);
    return outcome.exitStatus;
}
