#pragma once

#include "platform/media/output/OutputQueue.h"

namespace orvel {

// Returns a queue that decodes MP3, AAC and linear PCM and plays on the system's sound device, or on a silent
// one on the steady clock when there is none (reported by noSoundDeviceNotification). nullptr when there is
// no decoder for the format. Disposes of itself when its last user lets go.
std::shared_ptr<OutputQueue> newOutputQueue(const AudioStreamBasicDescription &format,
                                            OutputQueue::BufferCallback callback,
                                            const OutputQueueOptions &options = {});

// Disposes of all queues that are left and waits until their threads have ended. To be called at exit. A
// later queue starts the sound anew.
void joinOutputQueues();

} // namespace orvel
