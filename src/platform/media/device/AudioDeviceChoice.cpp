#include "platform/media/device/AudioDeviceChoice.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioBackEnd.h"
#include "platform/media/device/NullAudioDevice.h"
#include "platform/media/device/PulseAudioDevice.h"
#include "platform/media/device/SdlAudioDevice.h"

namespace orvel {

namespace {

// In the order in which they are tried.
constexpr AudioBackEnd backEnds[] = {
    {PulseAudioDevice::open, PulseAudioDevice::leaveThread, PulseAudioDevice::quit},
    {SdlAudioDevice::open, SdlAudioDevice::leaveThread, SdlAudioDevice::quit},
};

void tellOnceThatThereIsNoDevice()
{
    static std::atomic_flag told;
    if (!told.test_and_set())
        MainQueue::async(
            [] { NotificationCentre::defaultCentre().postNotification(noSoundDeviceNotification); });
}

} // namespace

std::unique_ptr<AudioDevice> openAudioDevice(const AudioDeviceRequest &request)
{
    if (qgetenv("ORVEL_AUDIO_DEVICE") != "null") {
        bool isBusy = false;
        for (const AudioBackEnd &backEnd : backEnds) {
            AudioBackEnd::Opening opening = backEnd.open(request);
            if (opening.device)
                return std::move(opening.device);
            isBusy = isBusy || opening.isBusy;
        }
        if (!isBusy)
            tellOnceThatThereIsNoDevice();
    }
    return std::make_unique<NullAudioDevice>(request);
}

void leaveAudioThread()
{
    for (const AudioBackEnd &backEnd : backEnds)
        backEnd.leaveThread();
}

void quitAudio()
{
    for (const AudioBackEnd &backEnd : backEnds)
        backEnd.quit();
}

} // namespace orvel
