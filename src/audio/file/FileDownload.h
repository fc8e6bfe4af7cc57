#pragma once

#include "audio/file/FileReadStream.h"
#include "audio/file/FillBuffer.h"
#include "audio/file/ThreadEvents.h"
#include "platform/media/parse/AudioFileStream.h"

namespace orvel {

// What a streamer's thread alone works with, for the thread's time. The others may wake its events.
struct FileDownload
{
    FileDownload() = default;
    ~FileDownload() { closeStream(); }
    FileDownload(const FileDownload &) = delete;
    FileDownload &operator=(const FileDownload &) = delete;

    void closeStream()
    {
        if (stream)
            stream->close();
        stream.reset();
    }

    ThreadEvents events;
    std::shared_ptr<FileReadStream> stream;
    bool isEndHandled = false; // of that stream
    std::unique_ptr<AudioFileStream> audioFileStream;
    qint64 bytesBeforePackets = 0; // that may come before the first packet, and have not come yet
    bool hasPackets = false;
    FillBuffer fill;
    std::size_t fillBufferIndex = 0;
};

} // namespace orvel
