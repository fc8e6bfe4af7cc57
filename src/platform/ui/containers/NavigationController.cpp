#include "platform/ui/containers/NavigationController.h"

namespace orvel {

NavigationController::NavigationController(std::shared_ptr<ViewController> root)
{
    Q_ASSERT(root);
    m_stack.push_back(std::move(root));
}

void NavigationController::pushViewController(const std::shared_ptr<ViewController> &controller, bool)
{
    if (!controller)
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> covered = m_stack.back();
    m_stack.push_back(controller);
    Q_EMIT topViewControllerChanged();
    if (!isVisible())
        return;
    controller->appear();
    covered->disappear();
}

void NavigationController::popViewController(bool)
{
    if (m_stack.size() == 1)
        return;
    const std::shared_ptr<ViewController> popped = std::move(m_stack.back());
    m_stack.pop_back();
    const std::shared_ptr<ViewController> top = m_stack.back();
    Q_EMIT topViewControllerChanged();
    if (isVisible())
        top->appear();
    popped->disappear();
}

void NavigationController::setNavigationBarHidden(bool hidden)
{
    if (m_navigationBarHidden == hidden)
        return;
    m_navigationBarHidden = hidden;
    Q_EMIT navigationBarHiddenChanged();
}

void NavigationController::viewDidLoad() { m_stack.back()->loadViewIfNeeded(); }

void NavigationController::viewWillAppear() { m_stack.back()->appear(); }

void NavigationController::viewDidDisappear() { m_stack.back()->disappear(); }

} // namespace orvel
