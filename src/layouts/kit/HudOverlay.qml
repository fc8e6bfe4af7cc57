import QtQuick
import Orvel.Containers
import Orvel.Kit

// The progress overlay: a turning ring with a status text over a mask that blocks touches.
Item {
    id: root

    visible: opacity > 0
    opacity: ProgressHud.visible ? 1 : 0

    Behavior on opacity { NumberAnimation { duration: Theme.quick } }

    Rectangle {
        anchors.fill: parent
        color: Theme.shade
        opacity: ProgressHud.dimmed ? 0.45 : 0
    }
    MouseArea {
        anchors.fill: parent
        enabled: ProgressHud.visible
        hoverEnabled: true
        onWheel: (wheel) => wheel.accepted = true
    }
    Rectangle {
        anchors.centerIn: parent
        width: Math.max(132, label.width + 40)
        height: 116
        radius: 20
        color: Theme.inkRaised
        border.color: Theme.inkLine
        border.width: 1
        Accessible.role: Accessible.AlertMessage
        Accessible.name: ProgressHud.status

        CircularProgress {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 24
            width: 36
            height: 36
            lineWidth: 3
            running: root.visible
        }
        Text {
            id: label
            anchors.horizontalCenter: parent.horizontalCenter
            y: 76
            text: ProgressHud.status
            textFormat: Text.PlainText
            color: Theme.inkText
            font.pixelSize: Theme.fontSmall
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    }
}
