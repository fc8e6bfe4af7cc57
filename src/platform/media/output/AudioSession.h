#pragma once

namespace orvel {

// What the application has declared to the system about its sound. Desktops have no such service; phones'
// ports do their part here. Main thread.
class AudioSession
{
public:
    enum class Category { Ambient, Playback };
    static AudioSession &sharedInstance();

    void setCategory(Category category) { m_category = category; }
    Category category() const { return m_category; }
    void setActive(bool active) { m_active = active; }
    bool isActive() const { return m_active; }

private:
    Category m_category = Category::Ambient;
    bool m_active = false;
};

} // namespace orvel
