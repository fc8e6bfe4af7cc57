#include "audio/file/AudioStreamerError.h"

#include <algorithm>
#include <utility>

namespace orvel {

namespace {

// Deliberate: a pause that fails has the text of a disposal that fails
// (AudioStreamerErrorTest.HasATextForEachCode).
constexpr std::pair<AudioStreamerErrorCode, const char *> texts[] = {
    {AudioStreamerErrorNone, "No error."},
    {AudioStreamerErrorNetworkConnection, "Network connection failed"},
    {AudioStreamerErrorFileStreamGetProperty, "File stream get property failed."},
    {AudioStreamerErrorFileStreamSeek, "File stream seek failed."},
    {AudioStreamerErrorFileStreamParseBytes, "Parse bytes failed."},
    {AudioStreamerErrorFileStreamOpen, "Open audio file stream failed."},
    {AudioStreamerErrorFileStreamClose, "Close audio file stream failed."},
    {AudioStreamerErrorAudioDataNotFound, "No audio data found."},
    {AudioStreamerErrorAudioQueueCreation, "Audio queue creation failed."},
    {AudioStreamerErrorAudioQueueBufferAllocation, "Audio buffer allocation failed."},
    {AudioStreamerErrorAudioQueueEnqueue, "Queueing of audio buffer failed."},
    {AudioStreamerErrorAudioQueueAddListener, "Audio queue add listener failed."},
    {AudioStreamerErrorAudioQueueRemoveListener, "Audio queue remove listener failed."},
    {AudioStreamerErrorAudioQueueStart, "Audio queue start failed."},
    {AudioStreamerErrorAudioQueuePause, "Audio queue dispose failed."},
    {AudioStreamerErrorAudioQueueBufferMismatch, "Audio queue buffers don't match."},
    {AudioStreamerErrorAudioQueueDispose, "Audio queue dispose failed."},
    {AudioStreamerErrorAudioQueueStop, "Audio queue stop failed."},
    {AudioStreamerErrorAudioQueueFlush, "Audio queue flush failed."},
    {AudioStreamerErrorGetAudioTime, "Audio queue get current time failed."},
    {AudioStreamerErrorBufferTooSmall, "Audio packets are larger than kAQDefaultBufSize."},
};

} // namespace

QString stringForErrorCode(AudioStreamerErrorCode code)
{
    const auto *const known = std::find_if(std::begin(texts), std::end(texts),
                                           [&](const auto &text) { return text.first == code; });
    return QString::fromLatin1(known == std::end(texts) ? "Audio playback failed" : known->second);
}

QString failureText(AudioStreamerErrorCode code, AudioStatus err)
{
    const QString text = stringForErrorCode(code);
    if (err == 0)
        return text;
    const auto character = [&](int shift) { return QLatin1Char(char(quint32(err) >> shift)); };
    return text + QStringLiteral(" err: ") + character(24) + character(16) + character(8) + character(0) +
           QStringLiteral(" %1\n").arg(err);
}

} // namespace orvel
