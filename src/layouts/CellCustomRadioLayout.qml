import QtQuick
import Orvel.App
import Orvel.Kit

// One web radio of the list.
TableRow {
    id: root

    required property CellCustomRadio cell

    text: cell.lblTitle.text
    Accessible.description: cell.lblDesc.text
    normalColor: Theme.row

    Picture {
        id: picture
        outlet: root.cell.img
        x: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        height: 44
    }
    Column {
        anchors.left: picture.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
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
    Rectangle {
        x: picture.x + picture.width + 14
        y: parent.height - 1
        width: parent.width - x
        height: 1
        color: Theme.rowLine
    }
}
