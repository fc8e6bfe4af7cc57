import QtQuick
import QtQuick.Templates as T
import Orvel.Kit

// What every element of a table does that can be pressed, a row or a section's header: stand at its place, be chosen by
// finger, pointer, keys or screen reader, and stay in sight while it has the keyboard.
T.ItemDelegate {
    id: root

    required property Table table
    required property int section
    required property real rowTop
    required property real rowHeight
    property color pressedColor: Theme.rowPressed
    property color normalColor: "transparent"

    x: (table.width - width) / 2
    y: rowTop
    width: Math.min(table.width, Theme.pageWidth)
    height: rowHeight
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.onPressAction: if (enabled && LastInput.acceptScreenReader()) clicked()
    Keys.forwardTo: [table.clicks]
    onPressed: LastInput.commitComposition()
    onVisualFocusChanged: if (visualFocus) table.reveal(rowTop, rowHeight)

    background: Rectangle {
        color: root.down ? root.pressedColor : root.normalColor

        FocusRing {
            anchors.fill: parent
            anchors.margins: 2
            visible: root.visualFocus
        }
    }
}
