#include "audio/live/AudioPacket.h"

#include <algorithm>
#include <cstring>

namespace orvel {

std::size_t AudioPacket::copyToBuffer(char *destination, std::size_t size)
{
    const std::size_t count = std::min(size, remainingLength());
    std::memcpy(destination, m_data.constData() + m_consumedLength, count);
    m_consumedLength += count;
    return count;
}

} // namespace orvel
