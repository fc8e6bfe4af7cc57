#pragma once

#include "audio/icy/IcyAnswer.h"
#include "audio/probe/StreamReading.h"

#include <QSaveFile>
#include <memory>

namespace orvel {

// Writes a stream's bytes, as they come, to a temporary file beside the place they are meant for, where
// finish() puts it. Leaves no file behind when it is dropped before.
class StreamRecording final : public StreamReading
{
public:
    // The path's extension gives way to the one of the stream's content type where that is known.
    explicit StreamRecording(const QString &localPath) : m_localPath(localPath) {}

    void readResponse(const UrlResponse &response) override;
    void readData(QByteArrayView chunk) override;
    // True after a failure to write.
    bool isOver() const override { return !m_writeError.isEmpty(); }
    // A sentence for people; empty when all is well.
    const QString &writeError() const { return m_writeError; }

    // Returns the file's path; empty when it could not be written, or when no answer has come.
    QString finish();

private:
    void open();
    void write(QByteArrayView bytes);
    void check(bool done);

    const QString m_localPath;
    ResponceType m_responceType = ResponceType::Unknown; // without an answer
    QString m_fileExtension;
    IcyAnswer m_answer;                // until the extension is decided
    std::unique_ptr<QSaveFile> m_file; // once the extension is known
    QString m_writeError;
};

} // namespace orvel
