import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Outlets

// A field of a form under its label. Writes its text and place back to the outlet and reports focus and the Return key.
FocusScope {
    id: root

    required property TextFieldOutlet outlet
    required property string label
    // The page that the field stands on.
    required property FormPage page
    property string hint
    property bool password: false
    property alias inputMethodHints: input.inputMethodHints

    // The place on the page; what it depends on are the arguments.
    function placeOnPage(place: rect, pageWidth: real, pageHeight: real): rect {
        return page.placeOf(this);
    }

    // After the field has given up the keyboard, Tab goes on from it.
    Keys.onTabPressed: input.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: input.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Layout.fillWidth: true
    implicitHeight: title.height + 6 + input.height
    visible: !outlet.hidden

    Binding {
        target: root.outlet
        property: "frame"
        value: root.placeOnPage(Qt.rect(root.x, root.y, root.width, root.height), root.page.width, root.page.height)
        restoreMode: Binding.RestoreNone
    }
    Connections {
        target: root.outlet

        function onFocusWanted(wanted: bool) {
            // Within the page: an alert in front keeps the keyboard until it goes.
            input.focus = wanted;
            root.focus = root.focus || wanted;
        }
    }
    Text {
        id: title
        width: parent.width
        text: root.label
        textFormat: Text.PlainText
        color: Theme.textSoft
        elide: Text.ElideRight
        font.pixelSize: Theme.fontSmall
        font.weight: Font.Medium
        Accessible.ignored: true
    }
    T.TextField {
        id: input
        y: title.height + 6
        width: parent.width
        implicitHeight: Math.max(Theme.touch + 4, contentHeight + 20)
        leftPadding: root.outlet.leftImage === "" ? 12 : 16
        rightPadding: 12
        verticalAlignment: TextInput.AlignVCenter
        horizontalAlignment: TextInput.AlignLeft
        focus: true
        color: Theme.text
        selectionColor: Theme.gold
        selectedTextColor: Theme.ink
        // Not drawn by the template. A screen reader takes it as the description; Qt keeps a password field's name to itself.
        placeholderText: root.password ? root.label : root.hint
        echoMode: root.password ? TextInput.Password : TextInput.Normal
        inputMethodHints: root.password ? Qt.ImhSensitiveData | Qt.ImhHiddenText | Qt.ImhNoAutoUppercase : Qt.ImhNone
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontBody
        selectByMouse: true
        Accessible.role: Accessible.EditableText
        Accessible.name: root.label
        Accessible.passwordEdit: root.password
        onTextChanged: root.outlet.text = text
        onAccepted: root.outlet.returnKey()
        onActiveFocusChanged: activeFocus ? root.outlet.beginEditing() : root.outlet.endEditing()

        background: FieldGround {
            active: input.activeFocus
        }

        Binding {
            target: input
            property: "text"
            value: root.outlet.text
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            x: input.leftPadding
            width: input.width - x - input.rightPadding
            visible: input.text === "" && input.preeditText === ""
            text: root.hint
            textFormat: Text.PlainText
            color: Theme.textSoft
            elide: Text.ElideRight
            font: input.font
            Accessible.ignored: true
        }
    }
}
