#include "platform/ui/containers/NavigationController.h"

namespace orvel {

NavigationController::NavigationController(std::shared_ptr<ViewController> root) : m_screens(std::move(root))
{
    Q_ASSERT(m_screens.bottom());
}

void NavigationController::pushViewController(const std::shared_ptr<ViewController> &controller,
                                              bool animated)
{
    if (!controller)
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> covered = m_screens.top();
    m_screens.push(controller, animated);
    if (!isVisible())
        return;
    controller->appear();
    covered->disappear();
}

void NavigationController::popViewController(bool animated)
{
    if (m_screens.hasOnlyBottom())
        return;
    const std::shared_ptr<ViewController> popped = m_screens.pop(animated);
    if (isVisible())
        topViewController()->appear();
    popped->disappear();
}

void NavigationController::setNavigationBarHidden(bool hidden)
{
    if (m_navigationBarHidden == hidden)
        return;
    m_navigationBarHidden = hidden;
    Q_EMIT navigationBarHiddenChanged();
}

void NavigationController::viewDidLoad() { topViewController()->loadViewIfNeeded(); }

void NavigationController::viewWillAppear() { topViewController()->appear(); }

void NavigationController::viewDidDisappear() { topViewController()->disappear(); }

} // namespace orvel
