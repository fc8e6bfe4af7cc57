#include "platform/modal/InputGate.h"

#include <QCoreApplication>
#include <QEvent>

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
    QCoreApplication::instance()->installEventFilter(this);
    Q_EMIT closed();
}

void InputGate::release()
{
    Q_ASSERT(m_holds > 0);
    if (--m_holds == 0)
        QCoreApplication::instance()->removeEventFilter(this);
}

bool InputGate::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        event->accept();
        return true;
    default:
        return false;
    }
}

} // namespace orvel
