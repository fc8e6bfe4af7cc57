#include "platform/ui/containers/ScreenStack.h"

#include <algorithm>

namespace orvel {

ScreenStack::ScreenStack(std::shared_ptr<ViewController> bottom) { m_screens.push_back(std::move(bottom)); }

bool ScreenStack::contains(const std::shared_ptr<ViewController> &screen) const
{
    return std::ranges::find(m_screens, screen) != m_screens.end();
}

void ScreenStack::setBottom(std::shared_ptr<ViewController> bottom)
{
    m_screens.front() = std::move(bottom);
    Q_EMIT changed(false);
}

void ScreenStack::push(std::shared_ptr<ViewController> screen, bool animated)
{
    m_screens.push_back(std::move(screen));
    Q_EMIT changed(animated);
}

std::shared_ptr<ViewController> ScreenStack::pop(bool animated)
{
    Q_ASSERT(!hasOnlyBottom());
    std::shared_ptr<ViewController> popped = std::move(m_screens.back());
    m_screens.pop_back();
    Q_EMIT changed(animated);
    return popped;
}

} // namespace orvel
