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
    // Not held yet, so that what closed() leads to, a text committed to its field, passes a filter that still
    // watches for repeats.
    if (m_holds == 0)
        Q_EMIT closed();
    if (m_holds++ == 0)
        QCoreApplication::instance()->installEventFilter(this); // which installs it once
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
