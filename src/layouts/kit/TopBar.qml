import QtQuick
import Orvel.Kit
import Orvel.Ui

// A screen's top bar: its button at the left, and in the middle its title, or the station's name while it has none. What is
// placed inside stands at the right.
Rectangle {
    id: root

    required property LabelOutlet title
    property string buttonIcon: "menu"
    property string buttonText: "Menu"
    default property alias actions: actionRow.data
    signal buttonClicked

    implicitHeight: Theme.barHeight
    color: Theme.ink

    IconButton {
        anchors.verticalCenter: parent.verticalCenter
        x: 6
        name: root.buttonIcon
        text: root.buttonText
        onClicked: root.buttonClicked()
    }
    Row {
        id: actionRow
        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: 6
    }
    OutletText {
        outlet: root.title
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * Math.max(60, actionRow.width + 12))
        color: Theme.inkText
        font.pixelSize: Theme.fontTitle
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    NamedIcon {
        anchors.centerIn: parent
        visible: root.title.text === ""
        width: 80
        height: 24
        name: "wordmark"
        Accessible.role: Accessible.Heading
        Accessible.name: "Orvel"
    }
}
