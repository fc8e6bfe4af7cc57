#pragma once

#include "audio/live/Streamer.h"
#include "tools/stream/Command.h"

namespace orvel {

// Plays a station and prints what happens as it happens.
class PlayCommand final : public Command,
                          public RadioDelegate,
                          public std::enable_shared_from_this<PlayCommand>
{
public:
    using Command::Command;
    ~PlayCommand() override;
    void start() override;
    void interrupt(int signal) override { end(Outcome::interrupted(signal)); }

private:
    void radioStateChanged(Radio &radio) override;
    void radioMetadataReady(Radio &radio) override;
    void radioTitleChanged(Radio &radio) override;
    void tell(const char *event, const Output::Fields &fields = {});
    void tellUrl();
    void end(const Outcome &outcome);

    std::shared_ptr<Streamer> m_streamer;
    double m_start = 0;
    std::optional<Url> m_toldUrl;
    RadioState m_toldState = RadioStateStopped;
    bool m_hasSounded = false;
    bool m_hasEnded = false;
};

} // namespace orvel
