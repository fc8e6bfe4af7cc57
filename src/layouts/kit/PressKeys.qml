import QtQuick
import QtQuick.Templates as T
import Orvel.Kit

// Lets keys and a screen reader click a button, which forwards its keys here. A key that is held down clicks once: it must not
// answer the question that its click brought. Space clicks when it goes down, so that nothing is left held.
Item {
    id: root

    required property T.AbstractButton button

    function press(event: KeyEvent): void {
        if (event.isAutoRepeat)
            return;
        LastInput.commitComposition();
        button.clicked();
    }
    function answerScreenReader(): void {
        if (button.enabled && button.visible && LastInput.acceptScreenReader())
            button.clicked();
    }

    Keys.onReturnPressed: (event) => press(event)
    Keys.onEnterPressed: (event) => press(event)
    Keys.onSpacePressed: (event) => press(event)

    Connections {
        target: root.button

        function onPressed() {
            LastInput.commitComposition();
        }
    }
}
