import QtQuick
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Outlets

// A search bar: the field, in it the button that empties it, and beside it the cancel button. What is typed goes back to the
// outlet; Enter searches; Down goes on to what lies below.
Item {
    id: root

    required property SearchBarOutlet outlet

    readonly property bool editing: field.activeFocus || clear.activeFocus || cancel.activeFocus

    implicitHeight: Theme.touch
    onEditingChanged: editing ? outlet.beginEditing() : outlet.endEditing()
    Keys.onDownPressed: cancel.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    T.TextField {
        id: field
        width: cancel.x
        height: parent.height
        leftPadding: 40
        rightPadding: clear.visible ? clear.width : 12
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
        Accessible.searchEdit: true
        onTextChanged: root.outlet.text = text
        onAccepted: root.outlet.searchButtonClicked()

        background: Rectangle {
            radius: 10
            color: root.outlet.darkField ? Theme.field : root.outlet.clearField ? "transparent" : Theme.inkRaised
            border.width: field.activeFocus ? 2 : 0
            border.color: Theme.ring
        }

        Binding {
            target: field
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
            x: field.leftPadding
            anchors.verticalCenter: parent.verticalCenter
            visible: field.text === "" && field.preeditText === ""
            text: field.placeholderText
            textFormat: Text.PlainText
            color: "#a89f8f"
            font: field.font
            Accessible.ignored: true
        }
        IconButton {
            id: clear
            anchors.right: parent.right
            height: parent.height
            visible: name !== "" && field.text !== ""
            focusPolicy: Qt.TabFocus
            name: root.outlet.clearIcon
            iconSize: 16
            text: "Effacer le texte"
            onClicked: {
                field.forceActiveFocus();
                root.outlet.text = "";
            }
        }
    }
    PressButton {
        id: cancel

        property real shown: root.outlet.showsCancelButton ? 1 : 0

        x: parent.width - shown * width
        width: implicitContentWidth + 2 * 12
        height: parent.height
        visible: shown > 0
        opacity: shown
        focusPolicy: Qt.TabFocus
        text: "Annuler"
        onClicked: {
            field.forceActiveFocus();
            root.outlet.cancelButtonClicked();
        }

        contentItem: Text {
            text: cancel.text
            textFormat: Text.PlainText
            color: Theme.inkText
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            font.pixelSize: Theme.fontBody
            Accessible.ignored: true
        }
        background: FocusRing {
            visible: cancel.visualFocus
        }
        Behavior on shown { NumberAnimation { duration: Theme.slide } }
    }
}
