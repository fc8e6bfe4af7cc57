#pragma once

#include <QObject>

namespace orvel {

// Swallows the user's input (presses, keys, wheel, touch, input methods) for the whole application while it
// is held: by the progress overlay while it masks the screen, and by a request that is waited for. Swallowed
// input is gone; it is not delivered afterwards to whatever lies under the finger then. A key that is held
// down when the gate opens is heard again after it was let go. Main thread only.
class InputGate : public QObject
{
    Q_OBJECT
public:
    static InputGate &shared();

    // Nested. The first hold emits closed() before it swallows anything, so that the window can let go of
    // presses in progress and keep a text in the making.
    void hold();
    void release();
    // A screen reader's presses are no events: who gets them asks this first.
    bool isHeld() const { return m_holds > 0; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void closed();

private:
    InputGate() = default;
    bool swallowsRepeat(QEvent &event);

    int m_holds = 0;
};

} // namespace orvel
