#include "platform/ui/outlets/Button.h"

namespace orvel {

void Button::setImage(const QString &name, ControlState state)
{
    if (state == ControlState::Highlighted)
        setHighlightedImage(name);
    else
        setNormalImage(name);
}

void Button::touchUpInside()
{
    if (!enabled() || hidden() || !m_action)
        return;
    // A copy: the action may set another one, or end the screen that owns this button.
    const Action action = m_action;
    action(*this);
}

} // namespace orvel
