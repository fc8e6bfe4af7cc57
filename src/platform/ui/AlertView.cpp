#include "platform/ui/AlertView.h"

#include "platform/foundation/MainQueue.h"

namespace orvel {

AlertView::AlertView(const QString &title, const QString &message, const QStringList &buttons,
                     std::weak_ptr<AlertViewDelegate> delegate, int tag)
    : m_title(title), m_message(message), m_buttons(buttons), m_delegate(std::move(delegate)), m_tag(tag)
{
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

void AlertView::click(int buttonIndex)
{
    if (m_clicked)
        return;
    m_clicked = true;
    // The click comes from the alert's own layout, which must not lose it before it has returned.
    MainQueue::async([self = shared_from_this()] {});
    Q_EMIT clicked();
    if (const std::shared_ptr<AlertViewDelegate> delegate = m_delegate.lock())
        delegate->clickedButtonAtIndex(*this, buttonIndex);
}

} // namespace orvel
