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

    // Gives `item` the keyboard; it shows that when the last input was a key.
    Q_INVOKABLE void handFocusTo(QQuickItem *item) const;
    // The same for what Tab leads to from `scope`, when the last input was a key; else for `scope` itself.
    Q_INVOKABLE void handFocusInto(QQuickItem *scope) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_key = false;
};

} // namespace orvel
