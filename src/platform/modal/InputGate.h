#pragma once

#include <QObject>

namespace orvel {

// Swallows the user's input (press, key, wheel, touch) for the whole application while somebody holds it: the
// progress overlay while it masks the screen, and a request that is waited for. Swallowed input is gone; it
// is not delivered afterwards to whatever lies under the finger then. Main thread only.
class InputGate : public QObject
{
    Q_OBJECT
public:
    static InputGate &shared();

    // Nested. The first hold emits closed(), so that the window can let go of a press in progress.
    void hold();
    void release();
    bool isHeld() const { return m_holds > 0; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void closed();

private:
    InputGate() = default;
    int m_holds = 0;
};

} // namespace orvel
