#include "platform/ui/AlertView.h"

#include "platform/foundation/MainQueue.h"
#include "platform/ui/Window.h"

namespace orvel {

std::shared_ptr<AlertView> AlertView::show(const QString &title, const QString &message,
                                           const QStringList &buttons,
                                           std::weak_ptr<AlertViewDelegate> delegate, int tag)
{
    const std::shared_ptr<AlertView> alert(new AlertView(title, message, buttons));
    alert->m_delegate = std::move(delegate);
    alert->m_tag = tag;
    QQmlEngine::setObjectOwnership(alert.get(), QQmlEngine::CppOwnership);
    if (Window *window = Window::keyWindow())
        window->addAlert(alert);
    return alert;
}

AlertView::AlertView(const QString &title, const QString &message, const QStringList &buttons)
    : m_title(title), m_message(message), m_buttons(buttons)
{
}

void AlertView::click(int buttonIndex)
{
    if (m_clicked)
        return;
    m_clicked = true;
    // The click comes from the alert's own layout, which must not lose it before it has returned.
    MainQueue::async([self = shared_from_this()] {});
    if (Window *window = Window::keyWindow())
        window->removeAlert(*this);
    if (const std::shared_ptr<AlertViewDelegate> delegate = m_delegate.lock())
        delegate->clickedButtonAtIndex(*this, buttonIndex);
}

} // namespace orvel
