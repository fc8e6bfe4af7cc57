import QtQuick
import Orvel.App
import Orvel.Kit

// The compact bar: what plays now, and its play button.
Rectangle {
    id: root

    required property RadioViewController screen

    height: 64
    radius: 16
    color: Theme.ink
    border.color: Theme.inkLine
    border.width: 1

    MouseArea {
        anchors.fill: parent
    }
    Picture {
        id: picture
        outlet: root.screen.bimgsinger
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        height: 44
        radius: 10
    }
    Column {
        anchors.left: picture.right
        anchors.leftMargin: 12
        anchors.right: logo.visible ? logo.left : play.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        OutletText {
            outlet: root.screen.bl1.text === "" ? root.screen.hl1 : root.screen.bl1
            width: parent.width
            color: Theme.inkText
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        OutletText {
            outlet: root.screen.bl2
            width: parent.width
            color: Theme.inkTextSoft
            font.pixelSize: Theme.fontSmall
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Picture {
        id: logo
        outlet: root.screen.bimg
        placeholder: false
        visible: !empty && !outlet.hidden
        anchors.right: play.left
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        height: 32
        radius: 8
    }
    ImageButton {
        id: play
        outlet: root.screen.bplay
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 48
        iconSize: 26
        text: outlet.tag !== 0 ? "Pause" : "Lecture"
    }
}
