#pragma once

#include <QString>

namespace orvel {

// The first thing that went wrong. The output queue's listener, pause, stop, flush and disposal can't fail;
// their codes are kept for who stores or shows them.
enum AudioStreamerErrorCode : qint32 {
    AudioStreamerErrorNone = 0,
    AudioStreamerErrorNetworkConnection = 1,
    AudioStreamerErrorFileStreamGetProperty = 2,
    AudioStreamerErrorFileStreamSeek = 3,
    AudioStreamerErrorFileStreamParseBytes = 4,
    AudioStreamerErrorFileStreamOpen = 5,
    AudioStreamerErrorFileStreamClose = 6,
    AudioStreamerErrorAudioDataNotFound = 7,
    AudioStreamerErrorAudioQueueCreation = 8,
    AudioStreamerErrorAudioQueueBufferAllocation = 9,
    AudioStreamerErrorAudioQueueEnqueue = 10,
    AudioStreamerErrorAudioQueueAddListener = 11,
    AudioStreamerErrorAudioQueueRemoveListener = 12,
    AudioStreamerErrorAudioQueueStart = 13,
    AudioStreamerErrorAudioQueuePause = 14,
    AudioStreamerErrorAudioQueueBufferMismatch = 15,
    AudioStreamerErrorAudioQueueDispose = 16,
    AudioStreamerErrorAudioQueueStop = 17,
    AudioStreamerErrorAudioQueueFlush = 18,
    AudioStreamerErrorGetAudioTime = 20,
    AudioStreamerErrorBufferTooSmall = 21,
};

// A platform operation's status: a four-character code, or 0.
using AudioStatus = qint32;

// Returns the text of a code, in English, for the log.
QString stringForErrorCode(AudioStreamerErrorCode code);

// Returns the log's line of a failure: the text of its code and, unless it is 0, the status.
QString failureText(AudioStreamerErrorCode code, AudioStatus err);

} // namespace orvel
