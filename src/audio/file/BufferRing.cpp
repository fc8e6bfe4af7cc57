#include "audio/file/BufferRing.h"

#include <algorithm>

namespace orvel {

namespace {

// Who has waited for a buffer fills several at once, so that the thread is seldom woken.
constexpr std::size_t enoughToRefill = BufferRing::size / 2;

} // namespace

void BufferRing::clear()
{
    const std::lock_guard lock(m_queueBuffersMutex);
    ++m_queueNumber;
    m_inuse.fill(false);
    m_buffersUsed = 0;
    m_isInterrupted = false;
}

quint64 BufferRing::queueNumber() const
{
    const std::lock_guard lock(m_queueBuffersMutex);
    return m_queueNumber;
}

void BufferRing::use(const Buffers &buffers)
{
    const std::lock_guard lock(m_queueBuffersMutex);
    m_buffers = buffers;
}

OutputBuffer &BufferRing::buffer(std::size_t index) const
{
    const std::lock_guard lock(m_queueBuffersMutex);
    return *m_buffers[index];
}

std::size_t BufferRing::take(std::size_t index)
{
    const std::lock_guard lock(m_queueBuffersMutex);
    m_inuse[index] = true;
    return ++m_buffersUsed;
}

bool BufferRing::giveBack(const OutputBuffer &buffer, quint64 queueNumber)
{
    const std::lock_guard lock(m_queueBuffersMutex);
    if (queueNumber != m_queueNumber)
        return true;
    const auto place = std::ranges::find(m_buffers, &buffer);
    const bool isKnown = place != m_buffers.end();
    if (isKnown && std::exchange(m_inuse[std::size_t(place - m_buffers.begin())], false))
        --m_buffersUsed;
    if (m_buffersUsed <= enoughToRefill)
        m_queueBufferReadyCondition.notify_one();
    return isKnown;
}

std::size_t BufferRing::buffersUsed() const
{
    const std::lock_guard lock(m_queueBuffersMutex);
    return m_buffersUsed;
}

bool BufferRing::waitUntilFree(std::size_t index)
{
    std::unique_lock lock(m_queueBuffersMutex);
    if (m_inuse[index])
        m_queueBufferReadyCondition.wait(
            lock, [&] { return m_isInterrupted || (!m_inuse[index] && m_buffersUsed <= enoughToRefill); });
    return !m_isInterrupted;
}

void BufferRing::interrupt()
{
    const std::lock_guard lock(m_queueBuffersMutex);
    m_isInterrupted = true;
    m_queueBufferReadyCondition.notify_one();
}

void BufferRing::resumeWaiting()
{
    const std::lock_guard lock(m_queueBuffersMutex);
    m_isInterrupted = false;
}

bool BufferRing::isInterrupted() const
{
    const std::lock_guard lock(m_queueBuffersMutex);
    return m_isInterrupted;
}

} // namespace orvel
