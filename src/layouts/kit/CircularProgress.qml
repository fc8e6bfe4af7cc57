import QtQuick
import Orvel.Kit

// A ring that fills as something arrives, and turns as long as nobody knows how much there is to come.
Item {
    id: root

    property real value: 0
    property color color: Theme.gold
    property real lineWidth: 2.5
    property bool running: visible

    implicitWidth: 24
    implicitHeight: 24

    ProgressArc {
        anchors.fill: parent
        value: root.value > 0 ? root.value : 0.28
        color: root.color
        lineWidth: root.lineWidth

        NumberAnimation on start {
            running: root.running
            loops: Animation.Infinite
            from: 0
            to: 1
            duration: 1100
        }
    }
}
