#pragma once

#include "audio/probe/StreamRecorder.h"
#include "tools/stream/Command.h"
#include "tools/stream/Resolver.h"

namespace orvel {

// Saves a stream to a file until its time is up, the stream ends or the user has enough; prints the file.
class RecordCommand final : public Command
{
public:
    using Command::Command;
    ~RecordCommand() override { m_resolver->cancel(); }
    void start() override;
    void interrupt(int signal) override { stop(Outcome::interrupted(signal), Outcome::interrupted(signal)); }

private:
    void record(const Url &url);
    // Puts the file in place and ends with `outcome`, or with `withoutAByte` when no byte has come.
    void stop(const Outcome &outcome, const Outcome &withoutAByte);

    const std::shared_ptr<Resolver> m_resolver = std::make_shared<Resolver>();
    const std::shared_ptr<StreamRecorder> m_recorder = std::make_shared<StreamRecorder>();
    bool m_isStopping = false;
};

} // namespace orvel
