#pragma once

#include <QString>

namespace orvel {

// Posted on the main thread after every change of a streamer's state. Its object is the streamer.
inline const QString ASStatusChangedNotification = QStringLiteral("ASStatusChangedNotification");

enum AudioStreamerState : qint32 {
    AudioStreamerStateInitialized = 0,
    AudioStreamerStateStartingThread = 1,
    AudioStreamerStateWaitingForData = 2,       // for the first sound, also after a seek
    AudioStreamerStateFlushingEndOfFile = 3,    // the file has ended before its sound began
    AudioStreamerStateWaitingForQueueStart = 4, // the output queue was started and does not run yet
    AudioStreamerStatePlaying = 5,
    AudioStreamerStateBuffering = 6, // all buffers have been played; the output queue is paused
    AudioStreamerStateStopping = 7,  // the output queue was told to stop and still runs
    AudioStreamerStateStopped = 8,
    AudioStreamerStatePaused = 9,
};

enum AudioStreamerStopReason : qint32 {
    AudioStreamerStopReasonNone = 0,
    AudioStreamerStopReasonEndOfFile = 1,
    AudioStreamerStopReasonUserAction = 2,
    AudioStreamerStopReasonError = 3,
    AudioStreamerStopReasonTemporary = 4, // a seek, after which the streamer goes on
};

} // namespace orvel
