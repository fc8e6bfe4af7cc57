#include "ToneFeeder.h"

#include "support/TestLoop.h"

#include <cstring>

namespace orvel::test {

ToneFeeder::ToneFeeder(EncodedTone tone, quint32 bufferBytes) : m_tone(std::move(tone))
{
    queue = newOutputQueue(m_tone.format, [this](OutputQueue &caller, OutputBuffer &buffer) {
        if (onCallback)
            onCallback(buffer);
        fill(caller, buffer);
    });
    if (!queue)
        qFatal("No queue for the test's tone");
    queue->addIsRunningListener([this](OutputQueue &, bool isRunning) { m_hasEnded = !isRunning; });
    for (int i = 0; i < 3; ++i)
        buffers.push_back(queue->allocateBuffer(bufferBytes));
}

ToneFeeder::~ToneFeeder()
{
    queue.reset();
    joinOutputQueues();
}

void ToneFeeder::play()
{
    const std::lock_guard lock(m_mutex);
    for (OutputBuffer *buffer : buffers)
        fill(*queue, *buffer);
    m_isStarted = queue->start();
    if (packetsLeft() == 0)
        queue->stop(false);
}

bool ToneFeeder::waitForTheEnd()
{
    return waitUntil([this] { return m_hasEnded.load(); });
}

void ToneFeeder::fill(OutputQueue &target, OutputBuffer &buffer)
{
    const std::lock_guard lock(m_mutex);
    std::vector<AudioStreamPacketDescription> packets;
    buffer.byteSize = 0;
    for (; m_next < m_tone.packets.size(); ++m_next) {
        AudioStreamPacketDescription packet = m_tone.packets[m_next];
        if (packet.dataByteSize > buffer.capacity() - buffer.byteSize)
            break;
        std::memcpy(buffer.data.data() + buffer.byteSize, m_tone.bytes.constData() + packet.startOffset,
                    packet.dataByteSize);
        packet.startOffset = buffer.byteSize;
        buffer.byteSize += packet.dataByteSize;
        packets.push_back(packet);
    }
    if (packets.empty())
        return;
    if (m_tone.format.bytesPerPacket != 0)
        packets.clear();
    target.enqueueBuffer(buffer, packets);
    if (m_isStarted && packetsLeft() == 0)
        target.stop(false);
}

} // namespace orvel::test
