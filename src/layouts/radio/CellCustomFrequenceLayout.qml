import QtQuick
import Orvel.Kit
import Orvel.Radio

// A city with its region, and at the right the frequency as on a tuner's dial.
TableRow {
    id: root

    required property CellCustomFrequence cell

    text: cell.lblTitle.text
    Accessible.description: cell.lblFrequency.text + ", " + cell.lblDesc.text
    pressedColor: normalColor

    // Grounds lie under the row's own, whose focus ring goes round all of it.
    Rectangle {
        z: -3
        anchors.fill: parent
        color: Theme.row

        Rectangle {
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.rowLine
        }
    }
    Column {
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: dial.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        OutletText {
            outlet: root.cell.lblTitle
            width: parent.width
            font.weight: Font.DemiBold
        }
        OutletText {
            outlet: root.cell.lblDesc
            width: parent.width
            color: Theme.textSoft
            font.pixelSize: Theme.fontSmall
        }
    }
    NamedIcon {
        id: dial
        z: -2
        anchors.right: parent.right
        width: 104
        height: parent.height
        visible: !root.cell.vfreq.hidden
        name: "lblf"
        fillMode: Image.Tile
        sourceSize.width: 8
        sourceSize.height: 8

        OutletText {
            outlet: root.cell.lblFrequency
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 16)
            color: Theme.inkText
            font.weight: Font.DemiBold
        }
        Rectangle {
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.inkLine
        }
    }
}
