#include "demo/Channel.h"

#include <algorithm>

namespace orvel::demo {

namespace {

constexpr qsizetype maximumBurst = 2 * 1024 * 1024;
constexpr qsizetype slack = 256 * 1024; // what a slow listener may lag behind its burst

} // namespace

Channel::Channel(const Programme &programme) : programme_(programme) {}

void Channel::enter(qsizetype burst)
{
    const std::scoped_lock audience(audienceMutex_);
    {
        const std::scoped_lock lock(mutex_);
        wanted_ = std::max(wanted_, burst);
    }
    changed_.notify_all();
    if (audience_++ > 0)
        return;
    ++encodersStarted_;
    encoder_ = std::jthread([this](const std::stop_token &stop) { encode(stop); });
}

void Channel::leave()
{
    const std::scoped_lock audience(audienceMutex_);
    if (--audience_ > 0)
        return;
    encoder_.request_stop();
    encoder_.join();
    const std::scoped_lock lock(mutex_);
    firstNumber_ = 0;
    keptBytes_ = wanted_ = 0;
    kept_.clear();
    failed_ = false;
}

void Channel::encode(const std::stop_token &stop)
{
    // Who comes back after a while hears what is on air by then.
    const std::chrono::duration<double> age = Clock::now() - born_;
    const auto encoder = Encoder::open(programme_, int(age.count() / Synth::songSeconds));
    std::unique_lock lock(mutex_);
    Clock::time_point due = Clock::now();
    while (encoder && !stop.stop_requested()) {
        const bool filling = keptBytes_ < wanted_;
        if (!filling && due > Clock::now()) {
            // Some frames at a time, as they leave a real server.
            changed_.wait_until(lock, stop, due + std::chrono::milliseconds(80),
                                [this] { return keptBytes_ < wanted_; });
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
        changed_.notify_all();
    }
    failed_ = !stop.stop_requested();
    changed_.notify_all();
}

void Channel::keep(Frame frame)
{
    keptBytes_ += frame.bytes.size();
    kept_.push_back(std::make_shared<const Frame>(std::move(frame)));
    while (keptBytes_ - kept_.front()->bytes.size() > wanted_ + slack) {
        keptBytes_ -= kept_.front()->bytes.size();
        kept_.pop_front();
        ++firstNumber_;
    }
}

qint64 Channel::burstStart(qsizetype burst) const
{
    qsizetype bytes = 0;
    std::size_t index = kept_.size();
    while (index > 0 && bytes < burst)
        bytes += kept_[--index]->bytes.size();
    return firstNumber_ + qint64(index);
}

Channel::Listener::Listener(Channel &channel, qsizetype burst)
    : channel_(channel), burst_(std::clamp<qsizetype>(burst, 0, maximumBurst))
{
    channel_.enter(burst_);
}

Channel::Listener::~Listener() { channel_.leave(); }

std::shared_ptr<const Frame> Channel::Listener::next(const std::stop_token &stop)
{
    std::unique_lock lock(channel_.mutex_);
    const auto ready = [this] {
        if (channel_.failed_)
            return true;
        if (number_ < 0)
            return channel_.keptBytes_ >= burst_;
        return number_ < channel_.firstNumber_ + qint64(channel_.kept_.size());
    };
    if (number_ < 0) {
        if (!channel_.changed_.wait(lock, stop, ready))
            return nullptr;
        number_ = channel_.burstStart(burst_);
    }
    if (!channel_.changed_.wait(lock, stop, ready) || channel_.failed_)
        return nullptr;
    number_ = std::max(number_, channel_.firstNumber_);
    return channel_.kept_[std::size_t(number_++ - channel_.firstNumber_)];
}

} // namespace orvel::demo
