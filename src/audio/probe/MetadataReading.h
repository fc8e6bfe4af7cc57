#pragma once

#include "audio/icy/IcyAnswer.h"
#include "audio/probe/StreamReading.h"

#include <QByteArray>
#include <QMap>
#include <optional>

namespace orvel {

// A stream's header fields, "StreamResponceType" ("HTTP 200" or "ICY 200") and, when one was found,
// "StreamTitle".
using MetadataDictionary = QMap<QString, QString>;

// Reads a stream's header fields and the title in its first metadata block. Counts sound without keeping it,
// so whatever interval a server announces, at most a header and a block are held.
class MetadataReading final : public StreamReading
{
public:
    void readResponse(const UrlResponse &response) override;
    void readData(QByteArrayView chunk) override;
    bool isOver() const override { return m_over; }
    // What is known so far; nullopt before a header was understood.
    const std::optional<MetadataDictionary> &dictionary() const { return m_metadataDictionary; }

private:
    void readIcyAnswer(QByteArrayView chunk);
    void readMetadata(QByteArrayView chunk);
    void readTitle(QByteArrayView block);

    ResponceType m_responceType = ResponceType::Unknown;
    std::optional<MetadataDictionary> m_metadataDictionary;
    qint64 m_bytesToBlock = 0; // still to come before the first metadata block; negative: there is none
    IcyAnswer m_answer;        // until the type is decided
    QByteArray m_streamData;   // the length byte and its block
    bool m_over = false;
};

} // namespace orvel
