#include "audio/probe/StreamRecording.h"

#include "audio/icy/StreamFileType.h"

#include <utility>

namespace orvel {

namespace {

QString withExtension(const QString &path, const QString &extension)
{
    if (extension.isEmpty())
        return path;
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    return path.first(dot > name ? dot : path.size()) + u'.' + extension;
}

} // namespace

void StreamRecording::readResponse(const UrlResponse &response)
{
    const QString contentType = contentTypeOf(response);
    if (contentType.isEmpty()) {
        m_responceType = ResponceType::Icy;
        return;
    }
    m_responceType = ResponceType::Http;
    m_fileExtension = streamFileType(contentType).fileExtension;
    open();
}

void StreamRecording::readData(QByteArrayView chunk)
{
    if (m_file) {
        write(chunk);
        return;
    }
    if (!m_answer.gather(chunk))
        return;
    if (const auto fields = m_answer.headerFields())
        m_fileExtension = streamFileType(fields->value(contentTypeKey)).fileExtension;
    open();
}

QString StreamRecording::finish()
{
    if (m_responceType == ResponceType::Unknown)
        return {};
    if (!m_file)
        open();
    if (!isOver())
        check(m_file->commit());
    return isOver() ? QString() : m_file->fileName();
}

void StreamRecording::open()
{
    m_file = std::make_unique<QSaveFile>(withExtension(m_localPath, m_fileExtension));
    check(m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered)); // a full disk is told at once
    write(m_answer.takeData());
}

void StreamRecording::write(QByteArrayView bytes)
{
    if (!isOver())
        check(m_file->write(bytes.data(), bytes.size()) == bytes.size());
}

void StreamRecording::check(bool done)
{
    if (!done)
        m_writeError =
            QStringLiteral("%1 can't be written: %2").arg(m_file->fileName(), m_file->errorString());
}

} // namespace orvel
