import QtQuick
import Orvel.Kit
import Orvel.Radio

// What every row of a radio shows: its picture, its name over a line of its own, and whether it is a favourite.
TableRow {
    id: root

    required property RadioCell radio
    default property alias line: texts.data

    text: radio.lblTitle.text
    normalColor: Theme.row

    Picture {
        id: picture
        outlet: root.radio.img
        x: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        height: 44
    }
    Column {
        id: texts
        anchors.left: picture.right
        anchors.leftMargin: 14
        anchors.right: heart.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        OutletText {
            outlet: root.radio.lblTitle
            width: parent.width
            font.weight: Font.DemiBold
        }
    }
    FavouriteButton {
        id: heart
        outlet: root.radio.btnFav
        radio: root.text
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
    }
    Rectangle {
        x: picture.x + picture.width + 14
        y: parent.height - 1
        width: parent.width - x
        height: 1
        color: Theme.rowLine
    }
}
