#pragma once

#include "audio/icy/IcyAnswer.h"
#include "audio/probe/StreamReading.h"

namespace orvel {

// Reads a stream's content type.
class ContentTypeReading final : public StreamReading
{
public:
    void readResponse(const UrlResponse &response) override;
    void readData(QByteArrayView chunk) override;
    bool isOver() const override { return m_over; }
    // A null text while none is known.
    const QString &contentType() const { return m_contentType; }

private:
    ResponceType m_responceType = ResponceType::Unknown;
    IcyAnswer m_answer; // until the type is decided
    QString m_contentType;
    bool m_over = false;
};

} // namespace orvel
