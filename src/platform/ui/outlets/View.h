#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QRectF>

namespace orvel {

// Declares a value of an outlet: property, getter, setter, change signal and member. The setter has no other
// effect than the signal. Use at the end of a class; it leaves the access at private.
#define OUTLET_VALUE(Type, name, setName)                                                                    \
    Q_PROPERTY(Type name READ name WRITE setName NOTIFY name##Changed)                                       \
public:                                                                                                      \
    const Type &name() const { return m_##name; }                                                            \
    void setName(const Type &value)                                                                          \
    {                                                                                                        \
        if (m_##name == value)                                                                               \
            return;                                                                                          \
        m_##name = value;                                                                                    \
        Q_EMIT name##Changed();                                                                              \
    }                                                                                                        \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    Type m_##name

// Declares what an outlet does for its screen: a setter for the action, and the function by which layouts run
// it. The class has a type Action, which takes the outlet. Leaves the access at private.
#define OUTLET_ACTION(name, setName)                                                                         \
public:                                                                                                      \
    void setName(Action action) { m_##name = std::move(action); }                                            \
    Q_INVOKABLE void name()                                                                                  \
    {                                                                                                        \
        if (const Action copy = m_##name) /* the action may end the outlet */                                \
            copy(*this);                                                                                     \
    }                                                                                                        \
                                                                                                             \
private:                                                                                                     \
    Action m_##name

// A passive place on a screen that a layout draws. Setting a value notifies the layout and has no other
// effect.
class View : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    View() = default;

    OUTLET_VALUE(bool, hidden, setHidden) = false;
    OUTLET_VALUE(int, tag, setTag) = 0;
    // In the screen's points; a layout writes it back.
    OUTLET_VALUE(QRectF, frame, setFrame);
};

} // namespace orvel
