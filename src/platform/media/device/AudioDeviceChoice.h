#pragma once

#include "platform/media/device/AudioDevice.h"

#include <QString>

namespace orvel {

// Posted on the main queue, without an object, the first time that there is no sound device.
inline const QString noSoundDeviceNotification = QStringLiteral("NoSoundDevice");

// Returns the system's sound device, or a silent one on the steady clock when there is none or when
// ORVEL_AUDIO_DEVICE=null in the environment asks for it. Never nullptr. Any thread.
std::unique_ptr<AudioDevice> openAudioDevice(const AudioDeviceRequest &request);

// Frees what is kept for the calling thread. To be called when a thread that opened devices ends.
void leaveAudioThread();

// Ends the system's sound where all devices are closed. The next device starts it anew.
void quitAudio();

} // namespace orvel
