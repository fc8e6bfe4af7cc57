import QtQuick
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Outlets

// A search bar's field. What is typed goes back to the outlet; Enter searches.
T.TextField {
    id: root

    required property SearchBarOutlet outlet

    implicitHeight: Theme.touch
    leftPadding: 40
    rightPadding: 12
    verticalAlignment: TextInput.AlignVCenter
    horizontalAlignment: TextInput.AlignLeft
    color: Theme.inkText
    selectionColor: Theme.gold
    selectedTextColor: Theme.ink
    placeholderText: "Rechercher"
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    selectByMouse: true
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    onTextChanged: outlet.text = text
    onAccepted: outlet.searchButtonClicked()
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    background: Rectangle {
        radius: 10
        color: root.outlet.darkField ? Theme.field : Theme.inkRaised
        border.width: root.activeFocus ? 2 : 0
        border.color: Theme.ring
    }

    Binding {
        target: root
        property: "text"
        value: root.outlet.text
    }
    NamedIcon {
        x: 11
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        name: "search"
    }
    Text {
        x: root.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text === "" && root.preeditText === ""
        text: root.placeholderText
        color: "#a89f8f"
        font: root.font
    }
}
