#pragma once

#include "platform/media/device/AudioDevice.h"

namespace orvel {

// One of the ways to the system's sound. All of them are listed in AudioDeviceChoice.cpp. Any thread.
struct AudioBackEnd
{
    struct Opening
    {
        std::unique_ptr<AudioDevice> device; // nullptr when it can't be had
        bool isBusy = false;                 // with other queues' sound, so there is a device after all
    };

    // Waits a little for a device that is being closed.
    Opening (*open)(const AudioDeviceRequest &request);
    // Frees what is kept for the calling thread, which opened devices and ends now.
    void (*leaveThread)();
    // Ends the back end if all its devices are closed. The next open() starts it anew.
    void (*quit)();
};

} // namespace orvel
