#include "platform/ui/ActionSheet.h"

#include "platform/foundation/MainQueue.h"

namespace orvel {

ActionSheet::ActionSheet(const QString &title, const QStringList &otherButtons, const QString &cancelButton,
                         std::weak_ptr<ActionSheetDelegate> delegate)
    : m_title(title)
    , m_otherButtons(otherButtons)
    , m_cancelButton(cancelButton)
    , m_delegate(std::move(delegate))
{
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

void ActionSheet::click(int buttonIndex)
{
    if (m_clicked)
        return;
    m_clicked = true;
    // The click comes from the sheet's own layout, which must not lose it before it has returned.
    MainQueue::async([self = shared_from_this()] {});
    Q_EMIT clicked();
    if (const std::shared_ptr<ActionSheetDelegate> delegate = m_delegate.lock())
        delegate->clickedButtonAtIndex(*this, buttonIndex);
}

} // namespace orvel
