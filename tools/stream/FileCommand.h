#pragma once

#include "audio/file/AudioStreamer.h"
#include "tools/stream/Command.h"

namespace orvel {

// Plays one audio file and prints its states and its progress.
class FileCommand final : public Command
{
public:
    using Command::Command;
    ~FileCommand() override;
    void start() override;
    void interrupt(int signal) override { end(Outcome::interrupted(signal)); }

private:
    void stateChanged();
    void tick();
    void seekOnce();
    void tell(const char *event, const Output::Fields &fields = {});
    void end(const Outcome &outcome);

    std::shared_ptr<AudioStreamer> m_streamer;
    RunLoop::Token m_ticks = 0;
    double m_start = 0;
    AudioStreamerState m_toldState = AudioStreamerStateInitialized;
    bool m_hasSounded = false;
    bool m_hasEnded = false;
    bool m_hasSought = false;
};

} // namespace orvel
