import QtQuick
import Orvel.Kit

// One answer of an alert.
PressButton {
    id: root

    property bool preferred: false
    property color ground: preferred ? Theme.gold : Theme.page

    implicitHeight: Math.max(46, implicitContentHeight + 20)

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        color: root.preferred ? Theme.ink : Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        font.pixelSize: Theme.fontBody
        font.weight: Font.DemiBold
    }
    background: Rectangle {
        radius: 12
        color: root.ground
        opacity: root.down ? 0.75 : 1

        FocusRing {
            anchors.fill: parent
            anchors.margins: -4
            radius: 16
            visible: root.visualFocus
        }
    }
}
