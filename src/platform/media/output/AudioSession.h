#pragma once

#include <atomic>
#include <functional>
#include <map>

namespace orvel {

enum class InterruptionState { Begin, End };

// What the application has declared to the system about its sound, and when the system wants it silent for
// another's, such as a call. Category and activity: any thread. Desktops have no service for these two;
// phones' ports do their part here.
class AudioSession
{
public:
    enum class Category { Ambient, Playback };
    static AudioSession &sharedInstance();

    void setCategory(Category category) { m_category = category; }
    Category category() const { return m_category; }
    void setActive(bool active) { m_active = active; }
    bool isActive() const { return m_active; }

    // Called on the main queue with each interruption's begin and end. At most one listener an owner. Main
    // thread.
    using InterruptionListener = std::function<void(InterruptionState)>;
    void setInterruptionListener(const void *owner, InterruptionListener listener);
    void removeInterruptionListener(const void *owner);
    bool isInterrupted() const { return m_interruptions > 0; }

    // For sound devices: the system wants, or no longer wants, one of them silent. Each begin has its end.
    // The listeners learn of the first begin and of the last end. Any thread.
    static void interrupt(InterruptionState state);

private:
    void change(InterruptionState state);

    std::atomic<Category> m_category = Category::Ambient;
    std::atomic<bool> m_active = false;
    std::map<const void *, InterruptionListener> m_listeners;
    int m_interruptions = 0; // that have not ended
};

} // namespace orvel
