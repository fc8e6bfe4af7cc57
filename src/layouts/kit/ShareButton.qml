import QtQuick
import Orvel.Kit

// A round button on a picture: a drawing on a dark, half clear ground.
IconButton {
    id: root

    iconSize: 20
    ringColor: Theme.inkText

    Rectangle {
        z: -1
        anchors.centerIn: parent
        width: 36
        height: 36
        radius: 18
        color: Theme.ink
        opacity: root.down ? 0.85 : 0.55
    }
}
