#include "layouts/kit/LastInput.h"

#include "platform/modal/InputGate.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>

namespace orvel {

LastInput::LastInput() { qGuiApp->installEventFilter(this); }

void LastInput::handFocusTo(QQuickItem *item) const { item->forceActiveFocus(focusReason()); }

void LastInput::handFocusInto(QQuickItem *scope) const
{
    handFocusTo(m_key ? scope->nextItemInFocusChain() : scope);
}

bool LastInput::isGated() { return InputGate::shared().isHeld(); }

bool LastInput::acceptScreenReader()
{
    if (isGated())
        return false;
    commitComposition();
    m_key = true;
    return true;
}

void LastInput::commitComposition()
{
    QGuiApplication::inputMethod()->commit();
    QObject *const field = QGuiApplication::focusObject();
    const QString left = field ? field->property("preeditText").toString() : QString();
    if (left.isEmpty())
        return;
    // An input method need not have an answer to that.
    QInputMethodEvent commit;
    commit.setCommitString(left);
    QCoreApplication::sendEvent(field, &commit);
    QGuiApplication::inputMethod()->reset();
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
