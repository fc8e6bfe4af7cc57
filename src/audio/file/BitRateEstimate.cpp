#include "audio/file/BitRateEstimate.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvel {

void BitRateEstimate::add(quint64 packets, quint32 packetSize)
{
    const quint64 counted = std::min(packets, maxPackets - m_processedPacketsCount);
    m_processedPacketsCount += counted;
    m_processedPacketsSizeTotal += counted * packetSize;
}

double BitRateEstimate::bitsPerSecond(double packetDuration) const
{
    return double(m_processedPacketsSizeTotal) / double(m_processedPacketsCount) * 8 / packetDuration;
}

double boundedSeconds(double seconds)
{
    constexpr double max = std::numeric_limits<qint32>::max();
    return std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, max);
}

} // namespace orvel
