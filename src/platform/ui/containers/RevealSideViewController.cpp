#include "platform/ui/containers/RevealSideViewController.h"

namespace orvel {

RevealSideViewController::RevealSideViewController(std::shared_ptr<ViewController> center)
    : m_center(std::move(center))
{
    Q_ASSERT(m_center);
}

RevealSideViewController::~RevealSideViewController() = default;

void RevealSideViewController::preloadViewController(const std::shared_ptr<ViewController> &controller, Side)
{
    if (!controller || (m_left && m_left->metaObject() == controller->metaObject()))
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> old = std::exchange(m_left, controller);
    Q_EMIT leftControllerChanged();
    if (isVisible() && m_open)
        controller->appear();
    if (old)
        old->disappear();
}

void RevealSideViewController::pushOldViewControllerOnDirection(Side, bool animated) { open(animated); }

void RevealSideViewController::popViewControllerWithNewCenterController(
    const std::shared_ptr<ViewController> &center, bool animated)
{
    if (center && center != m_center) {
        center->loadViewIfNeeded();
        const std::shared_ptr<ViewController> old = std::exchange(m_center, center);
        Q_EMIT centerControllerChanged();
        if (isVisible())
            center->appear();
        old->disappear();
    }
    close(animated);
}

void RevealSideViewController::close(bool animated) { setOpen(false, animated); }

void RevealSideViewController::open(bool animated) { setOpen(true, animated); }

void RevealSideViewController::setPanInteractionsWhenClosed(int interactions)
{
    if (m_panInteractionsWhenClosed == interactions)
        return;
    m_panInteractionsWhenClosed = interactions;
    Q_EMIT panOpensChanged();
}

void RevealSideViewController::viewDidLoad() { m_center->loadViewIfNeeded(); }

void RevealSideViewController::viewWillAppear()
{
    m_center->appear();
    if (m_open)
        m_left->appear();
}

void RevealSideViewController::viewDidDisappear()
{
    m_center->disappear();
    if (m_left)
        m_left->disappear();
}

void RevealSideViewController::setOpen(bool open, bool animated)
{
    if (m_open == open || !m_left)
        return;
    m_open = open;
    m_animated = animated;
    Q_EMIT isOpenChanged();
    if (!open)
        m_left->disappear();
    else if (isVisible())
        m_left->appear();
}

} // namespace orvel
