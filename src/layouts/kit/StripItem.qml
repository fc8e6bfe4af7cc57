import QtQuick
import QtQuick.Templates as T
import Orvel.Kit

// An item of a strip: to press it selects it. Arrow keys go to its neighbours, Home and End to the strip's ends.
T.TabButton {
    id: root

    required property Strip strip
    required property int row

    checkable: false
    implicitWidth: Math.max(Theme.touch, implicitContentWidth + 2 * Theme.margin)
    height: strip.height
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selected: strip.outlet.selectedItem === row
    Accessible.onPressAction: keys.answerScreenReader()
    Keys.forwardTo: [keys]
    Keys.onLeftPressed: strip.focusItem(row - 1)
    Keys.onRightPressed: strip.focusItem(row + 1)
    Keys.onPressed: (event) => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            strip.focusItem(event.key === Qt.Key_Home ? 0 : Infinity);
    }
    onVisualFocusChanged: if (visualFocus) strip.reveal(x, width)
    onClicked: strip.outlet.chooseItem(row)

    PressKeys {
        id: keys
        button: root
    }
    background: FocusRing {
        visible: root.visualFocus
    }
}
