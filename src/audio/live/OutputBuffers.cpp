#include "audio/live/OutputBuffers.h"

#include "audio/live/BufferFill.h"

#include <algorithm>

namespace orvel {

void OutputBuffers::clear()
{
    m_lockQueue.sync([&] {
        ++m_outputQueueNumber;
        m_outputQueue.reset();
        m_slots.fill({});
        m_packetQueue.removeAllPackets();
        m_queuedBytes = 0;
        m_isBuffering = false;
        m_streamHasEnded = false;
    });
}

void OutputBuffers::use(std::shared_ptr<OutputQueue> queue, const OutputBufferSet &buffers,
                        bool bitRateVaries)
{
    m_lockQueue.sync([&] {
        m_outputQueue = std::move(queue);
        for (std::size_t i = 0; i < buffers.size(); ++i)
            m_slots[i] = {buffers[i]};
        m_hasPacketDescriptions = bitRateVaries;
    });
}

OutputBuffers::Level OutputBuffers::addPackets(quint32 numberOfPackets, QByteArrayView inputData,
                                               std::span<const AudioStreamPacketDescription> descriptions)
{
    m_lockQueue.sync([&] {
        const qint64 constantSize = numberOfPackets == 0 ? 0 : inputData.size() / numberOfPackets;
        for (quint32 i = 0; i < numberOfPackets; ++i) {
            const AudioStreamPacketDescription description =
                i < descriptions.size()
                    ? descriptions[i]
                    : AudioStreamPacketDescription{i * constantSize, 0, quint32(constantSize)};
            const qint64 size = description.dataByteSize;
            if (size == 0 || description.startOffset < 0 || description.startOffset > inputData.size() - size)
                continue;
            m_packetQueue.addPacket(
                AudioPacket(inputData.sliced(description.startOffset, size).toByteArray(), description));
            m_queuedBytes += quint64(size);
        }
    });
    return level();
}

OutputBuffers::Level OutputBuffers::level()
{
    Level level;
    m_lockQueue.sync([&] { level = {m_queuedBytes, m_packetQueue.byteCount()}; });
    return level;
}

OutputBuffers::Outcome OutputBuffers::prime()
{
    Outcome outcome;
    m_lockQueue.sync([&] {
        m_isBuffering = false;
        outcome = fillAllIdle();
    });
    return outcome;
}

OutputBuffers::Outcome OutputBuffers::fillIdle()
{
    Outcome outcome;
    m_lockQueue.sync([&] {
        if (!m_isBuffering)
            outcome = fillAllIdle();
    });
    return outcome;
}

OutputBuffers::Outcome OutputBuffers::returned(OutputBuffer &buffer, quint64 outputQueueNumber)
{
    Outcome result;
    m_lockQueue.sync([&] {
        if (outputQueueNumber != m_outputQueueNumber)
            return;
        const auto slot = std::ranges::find(m_slots, &buffer, &Slot::buffer);
        if (slot == m_slots.end())
            return;
        slot->isEnqueued = false;
        const std::size_t waiting = m_packetQueue.byteCount();
        result = outcome(fill(*slot), waiting);
    });
    return result;
}

bool OutputBuffers::streamHasEnded()
{
    bool isSounding = false;
    m_lockQueue.sync([&] {
        m_streamHasEnded = true;
        isSounding = !m_isBuffering && buffersInUse() > 0;
    });
    return isSounding;
}

bool OutputBuffers::isBuffering()
{
    bool isBuffering = false;
    m_lockQueue.sync([&] { isBuffering = m_isBuffering; });
    return isBuffering;
}

// Returns false when the output queue does not take the buffer.
bool OutputBuffers::fill(Slot &slot)
{
    m_packetDescriptions.clear();
    if (m_hasPacketDescriptions)
        fillVariableBitRate(m_packetQueue, *slot.buffer, m_packetDescriptions);
    else
        fillConstantBitRate(m_packetQueue, *slot.buffer);
    if (slot.buffer->byteSize == 0)
        return true;
    slot.isEnqueued = m_outputQueue->enqueueBuffer(*slot.buffer, m_packetDescriptions);
    return slot.isEnqueued;
}

OutputBuffers::Outcome OutputBuffers::fillAllIdle()
{
    const std::size_t waiting = m_packetQueue.byteCount();
    bool isEnqueued = true;
    for (Slot &slot : m_slots)
        if (slot.buffer && !slot.isEnqueued && isEnqueued)
            isEnqueued = fill(slot);
    return outcome(isEnqueued, waiting);
}

OutputBuffers::Outcome OutputBuffers::outcome(bool isEnqueued, std::size_t waitingBefore)
{
    Outcome outcome{.hasRunLow = waitingBefore >= lowMark && m_packetQueue.byteCount() < lowMark};
    if (!isEnqueued) {
        outcome.change = Change::EnqueueFailed;
    } else if (buffersInUse() == 0 && !m_isBuffering) {
        outcome.change = m_streamHasEnded ? Change::StreamEnded : Change::Underrun;
        if (!m_streamHasEnded) {
            m_isBuffering = true;
            m_queuedBytes = 0;
        }
    }
    return outcome;
}

std::size_t OutputBuffers::buffersInUse() const
{
    return std::size_t(std::ranges::count(m_slots, true, &Slot::isEnqueued));
}

} // namespace orvel
