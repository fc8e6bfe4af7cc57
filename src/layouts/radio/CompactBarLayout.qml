import QtQuick
import Orvel.Kit
import Orvel.Outlets
import Orvel.Radio

// A compact bar over a list's end: what plays now, and its play button.
Rectangle {
    id: root

    required property CompactBar bar
    required property LabelOutlet title
    required property bool shown

    anchors.horizontalCenter: parent.horizontalCenter
    width: Math.min(parent.width - 16, Theme.pageWidth)
    height: 64
    y: shown ? parent.height - height - 8 : parent.height
    visible: y < parent.height
    enabled: shown
    radius: 16
    color: Theme.ink
    border.color: Theme.inkLine
    border.width: 1

    Behavior on y { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutCubic } }

    MouseArea {
        anchors.fill: parent
    }
    Picture {
        id: pictureItem
        outlet: root.bar.bimgsinger
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        height: 44
        radius: 10
    }
    Column {
        anchors.left: pictureItem.right
        anchors.leftMargin: 12
        anchors.right: logoItem.visible ? logoItem.left : playButton.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        OutletText {
            outlet: root.title
            width: parent.width
            color: Theme.inkText
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        OutletText {
            outlet: root.bar.bl2
            width: parent.width
            color: Theme.inkTextSoft
            font.pixelSize: Theme.fontSmall
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Picture {
        id: logoItem
        outlet: root.bar.bimg
        placeholder: false
        visible: !empty && !outlet.hidden
        anchors.right: playButton.left
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        height: 32
        radius: 8
    }
    ImageButton {
        id: playButton
        outlet: root.bar.bplay
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 48
        iconSize: 26
        text: outlet.tag !== 0 ? "Pause" : "Lecture"
    }
}
