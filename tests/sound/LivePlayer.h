#pragma once

#include "audio/live/Streamer.h"
#include "support/CapturedSound.h"

#include <QStringList>
#include <atomic>

namespace orvel::test {

// A live player whose sound is captured much faster than it would be heard. So that this never runs ahead of
// the network unless a test wants it to, no buffer is filled again while the hold is on.
class LivePlayer : public RadioDelegate
{
public:
    explicit LivePlayer(const QString &url);
    ~LivePlayer() override;

    bool reaches(RadioState state);
    // Plays from the start to the stream's end, all of which has to be there (`hasArrived`) before the sound
    // goes beyond the first buffers.
    bool playsToTheEnd(const std::function<bool()> &hasArrived);

    void hold() { m_isHeld = true; }
    void letGo();
    // Ends what is still playing.
    std::vector<float> sound();
    const QStringList &titles() const { return m_titles; }

    std::shared_ptr<Streamer> streamer;

private:
    void radioTitleChanged(Radio &radio) override { m_titles << radio.radioTitle(); }

    const CapturedSound m_sound;
    const std::shared_ptr<RadioDelegate> m_delegate{this, [](RadioDelegate *) {}};
    std::atomic<bool> m_isHeld = true;
    QStringList m_titles;
};

} // namespace orvel::test
