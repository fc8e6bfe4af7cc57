#pragma once

#include "audio/probe/StreamReading.h"

#include <QByteArray>

namespace orvel {

// Reads a stream's content type.
class ContentTypeReading final : public StreamReading
{
public:
    void readResponse(const UrlResponse &response) override;
    void readData(QByteArrayView chunk) override;
    bool isOver() const override { return m_over; }
    // Null while none is known.
    const QString &contentType() const { return m_contentType; }

private:
    ResponceType m_responceType = ResponceType::Unknown;
    QByteArray m_streamData; // an answer not told yet
    QString m_contentType;
    bool m_over = false;
};

} // namespace orvel
