import QtQuick
import QtQuick.Templates as T

// A control that touch, pointer, Space, Enter and a screen reader click.
T.AbstractButton {
    id: root

    // Qt calls both by their names for a screen reader.
    function accessiblePressAction(): void {
        keys.answerScreenReader();
    }
    function accessibleToggleAction(): void {
        keys.answerScreenReader();
    }

    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.forwardTo: [keys]

    PressKeys {
        id: keys
        button: root
    }
}
