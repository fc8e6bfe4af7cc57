#include "platform/media/output/AudioSession.h"

#include "platform/foundation/MainQueue.h"

#include <utility>
#include <vector>

namespace orvel {

AudioSession &AudioSession::sharedInstance()
{
    static AudioSession session;
    return session;
}

void AudioSession::setInterruptionListener(const void *owner, InterruptionListener listener)
{
    m_listeners[owner] = std::move(listener);
}

void AudioSession::removeInterruptionListener(const void *owner) { m_listeners.erase(owner); }

void AudioSession::interrupt(InterruptionState state)
{
    MainQueue::async([state] { sharedInstance().change(state); });
}

void AudioSession::change(InterruptionState state)
{
    const bool wasInterrupted = isInterrupted();
    m_interruptions += state == InterruptionState::Begin ? 1 : -1;
    if (isInterrupted() == wasInterrupted)
        return;
    // A listener may come or go meanwhile.
    std::vector<const void *> owners;
    for (const auto &[owner, listener] : m_listeners)
        owners.push_back(owner);
    for (const void *owner : owners)
        if (const auto found = m_listeners.find(owner); found != m_listeners.end())
            InterruptionListener(found->second)(state);
}

} // namespace orvel
