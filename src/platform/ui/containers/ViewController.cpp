#include "platform/ui/containers/ViewController.h"

#include "platform/foundation/RunLoop.h"

namespace orvel {

ViewController::ViewController() { QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership); }

ViewController::~ViewController() = default;

QString ViewController::layoutName() const
{
    return QString::fromLatin1(metaObject()->className()).section(QStringLiteral("::"), -1);
}

void ViewController::loadViewIfNeeded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    viewDidLoad();
}

void ViewController::appear()
{
    loadViewIfNeeded();
    if (m_visible)
        return;
    m_visible = true;
    viewWillAppear();
    viewDidAppear();
}

void ViewController::disappear()
{
    if (!m_visible)
        return;
    m_visible = false;
    viewDidDisappear();
}

void ViewController::presentViewController(std::shared_ptr<ViewController> controller, bool animated)
{
    if (ScreenPresenter *const presenter = ScreenPresenter::current)
        presenter->present(std::move(controller), animated);
}

void ViewController::dismissViewController(bool animated)
{
    if (ScreenPresenter *const presenter = ScreenPresenter::current)
        presenter->dismissFrontViewController(animated);
}

void ViewController::performAfterDelay(double seconds, std::function<void()> function)
{
    RunLoop::main().after(seconds, [self = shared_from_this(), run = std::move(function)] { run(); });
}

} // namespace orvel
