#include "platform/modal/InputGate.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace orvel {

InputGate &InputGate::shared()
{
    static InputGate gate;
    return gate;
}

void InputGate::hold()
{
    if (m_holds++ > 0)
        return;
    Q_EMIT closed();
    // Again, when it still watches for repeats: a filter is installed once.
    QCoreApplication::instance()->installEventFilter(this);
}

// The filter stays until the first fresh key.
void InputGate::release()
{
    Q_ASSERT(m_holds > 0);
    --m_holds;
}

bool InputGate::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        if (!isHeld() && !swallowsRepeat(*event))
            return false;
        event->accept();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::InputMethod:
        if (!isHeld())
            return false;
        event->accept();
        return true;
    default:
        return false;
    }
}

bool InputGate::swallowsRepeat(QEvent &event)
{
    if (static_cast<QKeyEvent &>(event).isAutoRepeat())
        return true;
    QCoreApplication::instance()->removeEventFilter(this);
    return false;
}

} // namespace orvel
