#include "platform/media/output/SoundOutput.h"

#include "platform/media/device/AudioDeviceChoice.h"
#include "platform/media/output/DecodingOutputQueue.h"
#include "platform/media/output/QueueThreads.h"

namespace orvel {

std::shared_ptr<OutputQueue> newOutputQueue(const AudioStreamBasicDescription &format,
                                            OutputQueue::BufferCallback callback,
                                            const OutputQueueOptions &options)
{
    auto decoder = AudioDecoder::make(format, options.magicCookie);
    if (!decoder)
        return nullptr;
    const auto core =
        std::make_shared<DecodingOutputQueue>(format, std::move(decoder), std::move(callback), options);
    const auto end = [weak = std::weak_ptr(core)] {
        if (const auto queue = weak.lock())
            queue->dispose();
    };
    if (!QueueThreads::run(
            [core] {
                core->run();
                leaveAudioThread();
            },
            end))
        return nullptr;
    // The thread keeps the core; the last user's letting go disposes of it.
    return {core.get(), [core](OutputQueue *) { core->dispose(); }};
}

void joinOutputQueues()
{
    QueueThreads::join();
    quitAudio();
}

} // namespace orvel
