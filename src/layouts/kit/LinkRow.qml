import QtQuick
import QtQuick.Layouts
import Orvel.Kit
import Orvel.Outlets

// A link that goes with a message.
Rectangle {
    id: root

    required property LabelOutlet url

    Layout.fillWidth: true
    implicitHeight: Math.max(Theme.touch, text.implicitHeight + 20)
    visible: text.visible
    radius: 10
    color: Theme.placeholder

    NamedIcon {
        id: icon
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        name: "link"
    }
    OutletText {
        id: text
        anchors.verticalCenter: parent.verticalCenter
        x: icon.x + icon.width + 10
        width: parent.width - x - 12
        outlet: root.url
        elide: Text.ElideMiddle
        font.pixelSize: Theme.fontSmall
        Accessible.role: Accessible.StaticText
        Accessible.name: "Lien : " + outlet.text
    }
}
