#include "platform/media/output/DecodingOutputQueue.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orvel {

DecodingOutputQueue::DecodingOutputQueue(const AudioStreamBasicDescription &format,
                                         std::unique_ptr<AudioDecoder> decoder, BufferCallback callback,
                                         const OutputQueueOptions &options)
    : m_format(format)
    , m_line(
          format, std::move(decoder), m_volume,
          [this] {
              const std::lock_guard lock(m_mutex);
              wake();
          },
          options)
    , m_callback(std::move(callback))
{
}

OutputBuffer *DecodingOutputQueue::allocateBuffer(quint32 bytes)
try {
    auto buffer = std::make_unique<OutputBuffer>(bytes);
    const std::lock_guard lock(m_mutex);
    return m_buffers.emplace_back(std::move(buffer)).get();
} catch (const std::bad_alloc &) {
    return nullptr;
}

bool DecodingOutputQueue::enqueueBuffer(OutputBuffer &buffer,
                                        std::span<const AudioStreamPacketDescription> descriptions)
{
    auto packets = packetsIn(buffer, descriptions);
    if (!packets)
        return false;
    const std::lock_guard lock(m_mutex);
    if (m_orders.isDisposed || m_orders.isStopping)
        return false;
    m_items.push_back({&buffer, std::move(*packets)});
    if (std::exchange(m_isHungry, false))
        wake();
    return true;
}

std::optional<std::vector<AudioStreamPacketDescription>>
DecodingOutputQueue::packetsIn(const OutputBuffer &buffer,
                               std::span<const AudioStreamPacketDescription> descriptions) const
{
    if (buffer.byteSize > buffer.capacity())
        return std::nullopt;
    for (const AudioStreamPacketDescription &packet : descriptions)
        if (packet.startOffset < 0 || packet.startOffset > buffer.byteSize ||
            packet.dataByteSize > buffer.byteSize - packet.startOffset)
            return std::nullopt;
    if (!descriptions.empty())
        return std::vector(descriptions.begin(), descriptions.end());

    const quint32 packetBytes = m_format.bytesPerPacket;
    if (packetBytes == 0 || buffer.byteSize % packetBytes != 0)
        return std::nullopt;
    // Packets of a single frame are decoded many at a time.
    const quint32 step = m_format.framesPerPacket == 1 ? packetBytes * 1024 : packetBytes;
    std::vector<AudioStreamPacketDescription> packets;
    for (quint32 at = 0; at < buffer.byteSize; at += std::min(step, buffer.byteSize - at))
        packets.push_back({.startOffset = at,
                           .variableFramesInPacket = 0,
                           .dataByteSize = std::min(step, buffer.byteSize - at)});
    return packets;
}

bool DecodingOutputQueue::start()
{
    const std::lock_guard lock(m_mutex);
    // A paused queue that was to stop when played out still is.
    if (m_orders.transport != Transport::Paused)
        m_orders.isStopping = false;
    m_orders.transport = Transport::Playing;
    m_position.seenAt = std::chrono::steady_clock::now();
    wake();
    return !m_orders.isDisposed;
}

void DecodingOutputQueue::pause()
{
    const std::lock_guard lock(m_mutex);
    if (m_orders.transport != Transport::Playing)
        return;
    m_position = {playedSeconds(), 0, {}};
    m_orders.transport = Transport::Paused;
    wake();
}

void DecodingOutputQueue::stop(bool immediate)
{
    const std::lock_guard lock(m_mutex);
    if (m_orders.isDisposed)
        return;
    if (immediate || m_orders.transport == Transport::Stopped) {
        m_orders.transport = Transport::Stopped;
        m_orders.isStopping = false;
        m_position = {};
        m_orders.reset = true;
        for (const RenderItem &item : std::exchange(m_items, {}))
            if (item.buffer)
                m_orders.dropped.push_back(item.buffer);
    } else {
        m_orders.isStopping = true;
        m_items.push_back({});
    }
    wake();
}

void DecodingOutputQueue::flush()
{
    const std::lock_guard lock(m_mutex);
    m_items.push_back({});
    wake();
}

void DecodingOutputQueue::dispose()
{
    const std::lock_guard lock(m_mutex);
    m_isDisposed = true;
    m_orders.isDisposed = true;
    m_items.clear();
    wake();
}

void DecodingOutputQueue::setVolume(float volume)
{
    const std::lock_guard lock(m_mutex);
    m_volume = volume > 0 ? std::min(volume, 1.f) : 0;
    wake();
}

void DecodingOutputQueue::setMagicCookie(const QByteArray &cookie)
{
    const std::lock_guard lock(m_mutex);
    m_orders.cookie = cookie;
    wake();
}

void DecodingOutputQueue::setTrim(const std::optional<AudioTrim> &trim)
{
    const std::lock_guard lock(m_mutex);
    m_orders.trim.emplace(trim);
    wake();
}

void DecodingOutputQueue::setMediaName(const QString &name)
{
    const std::lock_guard lock(m_mutex);
    m_orders.mediaName = name;
    wake();
}

void DecodingOutputQueue::addIsRunningListener(IsRunningListener listener)
{
    const std::lock_guard lock(m_mutex);
    m_listeners.push_back(std::move(listener));
}

std::optional<double> DecodingOutputQueue::currentTime() const
{
    const std::lock_guard lock(m_mutex);
    if (m_orders.transport == Transport::Stopped)
        return std::nullopt;
    return playedSeconds() * m_format.sampleRate;
}

// The caller holds the mutex.
double DecodingOutputQueue::playedSeconds() const
{
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - m_position.seenAt;
    return m_position.playedSeconds + std::min(since.count(), m_position.secondsAhead);
}

// The caller holds the mutex.
void DecodingOutputQueue::wake()
{
    m_isAwake = true;
    m_wake.notify_one();
}

void DecodingOutputQueue::run()
{
    std::optional<std::chrono::milliseconds> patience;
    while (true) {
        const Orders orders = awaitOrders(patience);
        if (orders.isDisposed)
            break;
        if (orders.reset)
            reset(orders.dropped);
        if (orders.cookie)
            m_line.setMagicCookie(*orders.cookie);
        if (orders.trim)
            m_line.setTrim(*orders.trim);
        if (orders.mediaName)
            m_line.setMediaName(*orders.mediaName);
        m_line.followVolume();
        if (orders.transport == Transport::Playing)
            play(orders.isStopping);
        else
            m_line.setPlaying(false);
        notePosition();
        patience = m_line.nextLook();
    }
    m_line.reset();
    m_callback = nullptr; // it may hold on to what holds on to the queue
}

void DecodingOutputQueue::notePosition()
{
    // A device's lock may be held while the device wakes this queue.
    const Position position{m_line.playedSeconds(), m_line.secondsAhead(), std::chrono::steady_clock::now()};
    const std::lock_guard lock(m_mutex);
    // Other orders that have come since stand for another time.
    if (m_orders.transport != Transport::Playing || m_orders.reset)
        return;
    const double before = playedSeconds();
    m_position = position;
    m_position.playedSeconds = std::max(position.playedSeconds, before);
}

DecodingOutputQueue::Orders
DecodingOutputQueue::awaitOrders(std::optional<std::chrono::milliseconds> patience)
{
    std::unique_lock lock(m_mutex);
    const auto isAwake = [this] { return m_isAwake; };
    if (patience)
        m_wake.wait_for(lock, *patience, isAwake);
    else
        m_wake.wait(lock, isAwake);
    m_isAwake = false;
    Orders orders = m_orders;
    m_orders.reset = false;
    m_orders.dropped.clear();
    m_orders.cookie.reset();
    m_orders.trim.reset();
    m_orders.mediaName.reset();
    return orders;
}

void DecodingOutputQueue::play(bool isStopping)
{
    while (m_line.fill()) {
        std::optional<RenderItem> item = takeItem();
        if (!item)
            break;
        m_line.give(std::move(*item));
    }
    m_line.setPlaying(true);
    if (!m_line.isDry() && !std::exchange(m_isRunning, true))
        tellRunning();
    while (OutputBuffer *buffer = m_line.takeReturned())
        handBack(*buffer);
    if (isStopping && m_line.isDry() && finishStopping())
        reset({});
}

std::optional<RenderItem> DecodingOutputQueue::takeItem()
{
    const std::lock_guard lock(m_mutex);
    if (m_orders.isDisposed || m_orders.reset)
        return std::nullopt;
    m_isHungry = m_items.empty();
    if (m_isHungry)
        return std::nullopt;
    std::optional<RenderItem> item = std::move(m_items.front());
    m_items.pop_front();
    return item;
}

// False when there is more to play, or when other orders have come.
bool DecodingOutputQueue::finishStopping()
{
    const std::lock_guard lock(m_mutex);
    if (!m_orders.isStopping || !m_items.empty())
        return false;
    m_orders.isStopping = false;
    m_orders.transport = Transport::Stopped;
    m_position = {};
    return true;
}

void DecodingOutputQueue::reset(const std::vector<OutputBuffer *> &dropped)
{
    for (OutputBuffer *buffer : m_line.reset())
        handBack(*buffer);
    for (OutputBuffer *buffer : dropped)
        handBack(*buffer);
    m_isRunning = false;
    tellRunning();
    m_line.closeEndedDevice();
}

void DecodingOutputQueue::handBack(OutputBuffer &buffer)
{
    if (!m_isDisposed)
        m_callback(*this, buffer);
}

void DecodingOutputQueue::tellRunning()
{
    std::vector<IsRunningListener> listeners;
    {
        const std::lock_guard lock(m_mutex);
        listeners = m_listeners;
    }
    for (const IsRunningListener &listener : listeners)
        if (!m_isDisposed)
            listener(*this, m_isRunning);
}

} // namespace orvel
