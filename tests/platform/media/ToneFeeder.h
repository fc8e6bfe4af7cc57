#pragma once

#include "platform/media/SoundOutput.h"
#include "support/EncodedTone.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace orvel::test {

// Plays a tone through a queue as a player does: three buffers, filled anew whenever the queue hands one
// back.
class ToneFeeder
{
public:
    ToneFeeder(EncodedTone tone, quint32 bufferBytes = 8192);
    ~ToneFeeder();

    // Fills the three buffers and starts.
    void play();
    // Until the queue says that its sound has ended.
    bool waitForTheEnd();
    std::size_t packetsLeft() const { return m_tone.packets.size() - m_next; }

    // Called on the queue's thread with each buffer before it is filled again.
    std::function<void(OutputBuffer &)> onCallback;
    std::shared_ptr<OutputQueue> queue;
    std::vector<OutputBuffer *> buffers;

private:
    void fill(OutputQueue &target, OutputBuffer &buffer);

    const EncodedTone m_tone;
    std::recursive_mutex m_mutex;
    std::atomic<std::size_t> m_next = 0;
    bool m_isStarted = false; // guarded by the mutex
    std::atomic<bool> m_hasEnded = false;
};

} // namespace orvel::test
