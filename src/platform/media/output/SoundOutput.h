#pragma once

#include "platform/media/output/OutputQueue.h"

namespace orvel {

// Decodes MP3, AAC and 16-bit PCM and plays on the system's sound device, or on a silent one on the steady
// clock when there is none; the first time that happens is told by
// noSoundDeviceNotification.
std::shared_ptr<OutputQueue> newOutputQueue(const AudioStreamBasicDescription &format,
                                            OutputQueue::BufferCallback callback);

// Disposes of all queues that are left and waits until their threads have ended. Call at exit; a later queue
// starts the sound anew.
void joinOutputQueues();

} // namespace orvel
