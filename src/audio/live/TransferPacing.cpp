#include "audio/live/TransferPacing.h"

#include "audio/live/OutputBuffers.h"

#include <algorithm>

namespace orvel {

namespace {

// Seconds: half of what waits, at the bit rate of the richest stream, at most 1.
double restBetweenReads(std::size_t bytesWaiting)
{
    constexpr double maxBytesASecond = 320'000.0 / 8;
    return std::min(double(bytesWaiting) / maxBytesASecond / 2, 1.0);
}

// Bytes: beyond, a server that sends faster than its sound is played has to wait.
std::size_t suspensionBound(std::size_t startThreshold) { return (1 << 20) + 2 * startThreshold; }

} // namespace

void TransferPacing::begin(std::shared_ptr<UrlConnection> connection)
{
    m_connection = std::move(connection);
    m_isSuspended = false;
    m_mayRest = false;
}

void TransferPacing::packetsWaiting(std::size_t bytes, std::size_t startThreshold)
{
    if (!m_connection)
        return;
    if (!m_isSuspended && bytes > suspensionBound(startThreshold)) {
        m_isSuspended = true;
        m_connection->suspend();
    } else if (m_isSuspended && bytes < OutputBuffers::lowMark) {
        m_isSuspended = false;
        m_connection->resume();
    }
    if (m_mayRest)
        m_connection->readAtMostEvery(restBetweenReads(bytes));
}

void TransferPacing::soundIsWanted()
{
    m_mayRest = false;
    if (!m_connection)
        return;
    m_connection->readAtMostEvery(0);
    if (std::exchange(m_isSuspended, false))
        m_connection->resume();
}

} // namespace orvel
