#include "platform/ui/Window.h"

#include <algorithm>

namespace orvel {

namespace {

Window *theKeyWindow = nullptr;

} // namespace

Window::Window() = default;

Window::~Window()
{
    if (theKeyWindow == this)
        theKeyWindow = nullptr;
}

Window *Window::keyWindow() { return theKeyWindow; }

void Window::release(const std::shared_ptr<ViewController> &controller)
{
    if (theKeyWindow)
        Q_EMIT theKeyWindow->viewControllerReleased(controller);
}

void Window::setRootViewController(std::shared_ptr<ViewController> controller)
{
    if (controller == m_root)
        return;
    const std::shared_ptr<ViewController> old = std::exchange(m_root, std::move(controller));
    showFrontScreen();
    Q_EMIT rootViewControllerChanged();
    if (!old)
        return;
    old->disappear();
    Q_EMIT viewControllerReleased(old);
}

void Window::makeKeyAndVisible()
{
    theKeyWindow = this;
    showFrontScreen();
}

void Window::present(std::shared_ptr<ViewController> controller)
{
    if (!controller || controller == m_root ||
        std::ranges::find(m_presented, controller) != m_presented.end())
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> covered = frontScreen();
    m_presented.push_back(std::move(controller));
    showFrontScreen();
    Q_EMIT presentedViewControllerChanged();
    if (covered && covered != frontScreen())
        covered->disappear();
}

void Window::dismissFrontViewController()
{
    if (m_presented.empty())
        return;
    const std::shared_ptr<ViewController> dismissed = std::move(m_presented.back());
    m_presented.pop_back();
    showFrontScreen();
    Q_EMIT presentedViewControllerChanged();
    dismissed->disappear();
    Q_EMIT viewControllerReleased(dismissed);
}

void Window::addAlert(std::shared_ptr<AlertView> alert)
{
    m_alerts.push_back(std::move(alert));
    Q_EMIT alertChanged();
}

void Window::removeAlert(const AlertView &alert)
{
    if (std::erase_if(m_alerts, [&](const auto &shown) { return shown.get() == &alert; }) > 0)
        Q_EMIT alertChanged();
}

std::shared_ptr<ViewController> Window::frontScreen() const
{
    return m_presented.empty() ? m_root : m_presented.back();
}

void Window::showFrontScreen()
{
    if (const std::shared_ptr<ViewController> front = frontScreen(); front && theKeyWindow == this)
        front->appear();
}

} // namespace orvel
