import QtQuick
import QtQuick.Layouts
import Orvel.Kit
import Orvel.Outlets

// A check box of a screen beside its label: checked while the button's tag is not 0, drawn by its background image.
PressButton {
    id: root

    required property ButtonOutlet outlet

    checkable: true // makes it a check box to a screen reader
    checked: outlet.tag !== 0
    focusPolicy: Qt.TabFocus
    Layout.fillWidth: true
    implicitHeight: Math.max(Theme.touch, implicitContentHeight + 12)
    visible: !outlet.hidden
    enabled: outlet.enabled
    Accessible.role: Accessible.CheckBox
    onClicked: outlet.touchUpInside()

    contentItem: RowLayout {
        spacing: 12

        NamedIcon {
            Layout.leftMargin: 2
            Layout.preferredWidth: 24
            Layout.preferredHeight: 24
            name: root.outlet.backgroundImage
        }
        Text {
            Layout.fillWidth: true
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: Theme.fontBody
        }
    }
    background: FocusRing {
        anchors.fill: parent
        visible: root.visualFocus
    }
}
