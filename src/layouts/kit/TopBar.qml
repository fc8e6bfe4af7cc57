import QtQuick
import Orvel.Kit
import Orvel.Outlets

// A screen's top bar: its button at the left, and in the middle its title. Without one, or while that is empty, `untitled`
// stands there, or else the station's name. What is placed inside stands at the right.
Rectangle {
    id: root

    property LabelOutlet title: null
    property string untitled
    readonly property string titleText: title === null || title.text === "" ? untitled : title.text
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
    Text {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * Math.max(60, actionRow.width + 12))
        visible: text !== ""
        text: root.titleText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.inkText
        font.pixelSize: Theme.fontTitle
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    NamedIcon {
        anchors.centerIn: parent
        visible: root.titleText === ""
        width: 80
        height: 24
        name: "wordmark"
        Accessible.role: Accessible.Heading
        Accessible.name: "Orvel"
    }
}
