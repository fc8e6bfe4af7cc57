#pragma once

#include "platform/media/device/AudioDevice.h"

#include <QString>

namespace orvel {

// Posted on the main queue, without an object, the first time that there is no sound device.
inline const QString noSoundDeviceNotification = QStringLiteral("NoSoundDevice");

// The system's sound device, or a silent one on the steady clock when there is none.
// ORVEL_AUDIO_DEVICE=null in the environment asks for the silent one.
std::unique_ptr<AudioDevice> openAudioDevice(const AudioDeviceRequest &request);

} // namespace orvel
