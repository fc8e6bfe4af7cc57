#pragma once

#include <QString>

namespace orvel {

enum class RadioState : qint32 {
    RadioStateStopped = 0,
    RadioStateConnecting = 1,
    RadioStateBuffering = 2,
    RadioStatePlaying = 3,
    RadioStateError = 4,
};
using enum RadioState;
// Returns one word for tools and logs: "stopped", "connecting", "buffering", "playing", "error".
QString nameOf(RadioState state);

// 8 is never used.
enum class RadioError : qint32 {
    RadioErrorNone = 0,
    RadioErrorPlaylistParsing = 1,
    RadioErrorFileStreamGetProperty = 2,
    RadioErrorFileStreamOpen = 3,
    RadioErrorAudioQueueCreate = 4,
    RadioErrorAudioQueueBufferAllocation = 5,
    RadioErrorAudioQueueEnqueue = 6,
    RadioErrorAudioQueueStart = 7,
    RadioErrorNetworkError = 9,
    RadioErrorHostNotReachable = 10,
};
using enum RadioError;

} // namespace orvel
