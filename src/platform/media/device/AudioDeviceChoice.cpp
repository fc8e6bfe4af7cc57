#include "platform/media/device/AudioDeviceChoice.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/NullAudioDevice.h"
#include "platform/media/device/SdlAudioDevice.h"

namespace orvel {

std::unique_ptr<AudioDevice> openAudioDevice(const AudioDeviceRequest &request)
{
    if (qgetenv("ORVEL_AUDIO_DEVICE") != "null") {
        SdlAudioDevice::Opening opening = SdlAudioDevice::open(request);
        if (opening.device)
            return std::move(opening.device);
        static std::atomic_flag told;
        if (!opening.isBusy && !told.test_and_set())
            MainQueue::async(
                [] { NotificationCentre::defaultCentre().postNotification(noSoundDeviceNotification); });
    }
    return std::make_unique<NullAudioDevice>(request.sampleRate, request.channels);
}

} // namespace orvel
