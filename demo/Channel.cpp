#include "demo/Channel.h"

#include <algorithm>

namespace orvel::demo {

namespace {

constexpr qsizetype maxBurst = 2 * 1024 * 1024;
constexpr qsizetype slack = 256 * 1024; // what a slow listener may lag behind its burst

} // namespace

Channel::Channel(const Programme &programme) : m_programme(programme) {}

void Channel::enter(qsizetype burst)
{
    const std::scoped_lock audience(m_audienceMutex);
    {
        const std::scoped_lock lock(m_mutex);
        m_wanted = std::max(m_wanted, burst);
    }
    m_changed.notify_all();
    if (m_audience++ > 0)
        return;
    m_encoder = std::jthread([this](const std::stop_token &stop) { encode(stop); });
}

void Channel::leave()
{
    const std::scoped_lock audience(m_audienceMutex);
    if (--m_audience > 0)
        return;
    m_encoder.request_stop();
    m_encoder.join();
    const std::scoped_lock lock(m_mutex);
    m_firstNumber = 0;
    m_keptBytes = m_wanted = 0;
    m_kept.clear();
    m_failed = false;
}

void Channel::encode(const std::stop_token &stop)
{
    // Who comes back after a while hears what is on air by then.
    const std::chrono::duration<double> age = Clock::now() - m_born;
    const auto encoder = Encoder::open(m_programme, int(age.count() / Synth::songSeconds));
    std::unique_lock lock(m_mutex);
    Clock::time_point due = Clock::now();
    while (encoder && !stop.stop_requested()) {
        const bool filling = m_keptBytes < m_wanted;
        if (!filling && due > Clock::now()) {
            // Some frames at a time, as they leave a real server.
            m_changed.wait_until(lock, stop, due + std::chrono::milliseconds(80),
                                 [this] { return m_keptBytes < m_wanted; });
            continue;
        }
        lock.unlock();
        Frame frame = encoder->next();
        lock.lock();
        if (frame.bytes.isEmpty())
            break;
        const auto length = std::chrono::duration<double>(frame.seconds);
        due = filling ? Clock::now() : due + std::chrono::duration_cast<Clock::duration>(length);
        keep(std::move(frame));
        m_changed.notify_all();
    }
    m_failed = !stop.stop_requested();
    m_changed.notify_all();
}

void Channel::keep(Frame frame)
{
    m_keptBytes += frame.bytes.size();
    m_kept.push_back(std::make_shared<const Frame>(std::move(frame)));
    while (m_keptBytes - m_kept.front()->bytes.size() > m_wanted + slack) {
        m_keptBytes -= m_kept.front()->bytes.size();
        m_kept.pop_front();
        ++m_firstNumber;
    }
}

qint64 Channel::burstStart(qsizetype burst) const
{
    qsizetype bytes = 0;
    std::size_t index = m_kept.size();
    while (index > 0 && bytes < burst)
        bytes += m_kept[--index]->bytes.size();
    return m_firstNumber + qint64(index);
}

Channel::Listener::Listener(Channel &channel, qsizetype burst)
    : m_channel(channel), m_burst(std::clamp<qsizetype>(burst, 0, maxBurst))
{
    m_channel.enter(m_burst);
}

Channel::Listener::~Listener() { m_channel.leave(); }

std::shared_ptr<const Frame> Channel::Listener::next(const std::stop_token &stop)
{
    std::unique_lock lock(m_channel.m_mutex);
    const auto ready = [this] {
        if (m_channel.m_failed)
            return true;
        if (m_number < 0)
            return m_channel.m_keptBytes >= m_burst;
        return m_number < m_channel.m_firstNumber + qint64(m_channel.m_kept.size());
    };
    if (m_number < 0) {
        if (!m_channel.m_changed.wait(lock, stop, ready))
            return nullptr;
        m_number = m_channel.burstStart(m_burst);
    }
    if (!m_channel.m_changed.wait(lock, stop, ready) || m_channel.m_failed)
        return nullptr;
    m_number = std::max(m_number, m_channel.m_firstNumber);
    return m_channel.m_kept[std::size_t(m_number++ - m_channel.m_firstNumber)];
}

} // namespace orvel::demo
