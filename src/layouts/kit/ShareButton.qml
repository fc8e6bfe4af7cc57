import QtQuick
import Orvel.Kit

// A round button on a picture: a drawing on a dark, half clear ground, which its ring needs before a light picture.
IconButton {
    id: root

    iconSize: 20
    ringColor: Theme.inkText

    Rectangle {
        z: -1
        anchors.centerIn: parent
        width: root.visualFocus ? root.width : 36
        height: width
        radius: width / 2
        color: Theme.ink
        opacity: root.down || root.visualFocus ? 0.85 : 0.55
    }
}
