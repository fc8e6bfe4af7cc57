import QtQuick
import Orvel.Kit

// One choice of an action sheet. Arrow keys go to its neighbours.
PressButton {
    id: root

    // A line parts it from what is above.
    property bool lined: false

    implicitHeight: Math.max(54, implicitContentHeight + 24)
    hoverEnabled: true
    leftPadding: 16
    rightPadding: 16
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontTitle
    font.weight: Font.Medium
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        color: Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        font: root.font
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            radius: 12
            color: root.down ? Theme.rowPressed : root.hovered ? Theme.page : "transparent"
        }
        Rectangle {
            x: 16
            width: parent.width - 32
            height: 1
            visible: root.lined
            color: Theme.rowLine
        }
        FocusRing {
            anchors.fill: parent
            anchors.margins: 4
            radius: 12
            visible: root.visualFocus
        }
    }
}
