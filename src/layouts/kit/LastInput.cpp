#include "layouts/kit/LastInput.h"

#include <QEvent>
#include <QGuiApplication>

namespace orvel {

LastInput::LastInput() { qGuiApp->installEventFilter(this); }

void LastInput::handFocusTo(QQuickItem *item) const
{
    item->forceActiveFocus(m_key ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

void LastInput::handFocusInto(QQuickItem *scope) const
{
    handFocusTo(m_key ? scope->nextItemInFocusChain() : scope);
}

bool LastInput::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        m_key = true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        m_key = false;
        break;
    default:
        break;
    }
    return false;
}

} // namespace orvel
