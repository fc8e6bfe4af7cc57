#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>

namespace orvel {

// Knows whether the user works by keys or by touch and pointer, so that the focus is shown where it matters
// when a layout hands it on. Main thread.
class LastInput : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    LastInput();

    // Returns the reason to give the focus with: a control shows the focus that keys brought.
    static Qt::FocusReason focusReason() { return m_key ? Qt::TabFocusReason : Qt::OtherFocusReason; }
    // Gives `item` the keyboard; it shows that when the last input was a key.
    Q_INVOKABLE void handFocusTo(QQuickItem *item) const;
    // The same for what Tab leads to from `scope`, when the last input was a key; else for `scope` itself.
    Q_INVOKABLE void handFocusInto(QQuickItem *scope) const;

    // Returns whether the input gate is held.
    Q_INVOKABLE static bool isGated();
    // Returns whether a screen reader may press now: not while the input gate is held. Counts as a key.
    Q_INVOKABLE bool acceptScreenReader();
    // Puts what an input method has in the making into the field that shows it. A button commits before it
    // acts, since a touch may leave the keyboard where it is.
    Q_INVOKABLE static void commitComposition();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static inline bool m_key = false;
};

} // namespace orvel
