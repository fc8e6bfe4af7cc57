import QtQuick
import Orvel.Kit

// A button that is a drawing: at least as large as a finger, whatever the drawing's size.
PressButton {
    id: root

    required property string name
    property string pressedName: name
    property real iconSize: 24
    property color ringColor: Theme.ring

    implicitWidth: Math.max(Theme.touch, iconSize)
    implicitHeight: Math.max(Theme.touch, iconSize)

    contentItem: Item {
        NamedIcon {
            anchors.centerIn: parent
            width: root.iconSize
            height: root.iconSize
            name: root.down ? root.pressedName : root.name
            scale: root.down ? 0.92 : 1
            opacity: root.down ? 0.8 : 1

            Behavior on scale { NumberAnimation { duration: Theme.quick } }
        }
    }
    background: FocusRing {
        visible: root.visualFocus
        radius: width / 2
        border.color: root.ringColor
        anchors.fill: parent
        anchors.margins: root.iconSize > 50 ? -4 : 0
    }
}
