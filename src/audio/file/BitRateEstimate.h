#pragma once

#include <QtGlobal>

namespace orvel {

// The mean bit rate of a file's first packets.
class BitRateEstimate
{
public:
    // Counts packets of this size, until 5,000 are counted.
    void add(quint64 packets, quint32 packetSize);

    // Whether enough packets are counted.
    bool isKnown() const { return m_processedPacketsCount > minPackets; }
    // Of a known estimate. `packetDuration` is in seconds and not 0.
    double bitsPerSecond(double packetDuration) const;

private:
    static constexpr quint64 minPackets = 50;
    static constexpr quint64 maxPackets = 5000;
    quint64 m_processedPacketsCount = 0;
    quint64 m_processedPacketsSizeTotal = 0;
};

// Returns seconds that are finite, at least 0 and at most 2^31 - 1, whatever a file says.
double boundedSeconds(double seconds);

} // namespace orvel
