import QtQuick
import QtQuick.Templates as T

// What can be clicked by touch, pointer, Space and Enter. A key that is held down clicks once: it must not answer the question
// that its click brought.
T.AbstractButton {
    function press(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            clicked();
    }

    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: (event) => press(event)
    Keys.onEnterPressed: (event) => press(event)
}
