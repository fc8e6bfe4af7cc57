#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <cstddef>

namespace orvel {

// One compressed packet and how much of it has been copied out.
class AudioPacket
{
public:
    explicit AudioPacket(QByteArray data, const AudioStreamPacketDescription &description = {})
        : m_data(std::move(data)), m_audioDescription(description)
    {
    }

    std::size_t length() const { return std::size_t(m_data.size()); }
    std::size_t remainingLength() const { return length() - m_consumedLength; }
    // Copies at most `size` bytes from where the last copy ended. Returns how many.
    std::size_t copyToBuffer(char *destination, std::size_t size);

    const QByteArray &data() const { return m_data; }
    const AudioStreamPacketDescription &audioDescription() const { return m_audioDescription; }

private:
    QByteArray m_data;
    AudioStreamPacketDescription m_audioDescription;
    std::size_t m_consumedLength = 0;
};

} // namespace orvel
