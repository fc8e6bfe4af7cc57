pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Orvel.Containers
import Orvel.Kit

// The action sheet in front, over a shade that blocks everything beneath. Escape, Back and a tap beside the sheet cancel.
FocusScope {
    id: root

    required property ActionSheet sheet

    function cancel(): void {
        sheet.click(sheet.cancelButtonIndex);
    }

    visible: sheet !== null
    Keys.onEscapePressed: cancel()
    Keys.onBackPressed: cancel()

    Rectangle {
        anchors.fill: parent
        color: Theme.shade
        opacity: root.visible ? 0.55 : 0

        Behavior on opacity { NumberAnimation { duration: Theme.quick } }
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        // Not with the second tap of two on what brought the sheet.
        onClicked: if (panel.risen === 1) root.cancel()
        onWheel: (wheel) => wheel.accepted = true
    }
    Column {
        id: panel
        property real risen: root.visible ? 1 : 0
        // A wide window has it in its middle.
        readonly property real foot: root.width < Theme.wideFrom ? 8 : Math.max(8, (root.height - height) / 2)

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(480, root.width - 16)
        y: root.height - (height + foot) * risen
        spacing: 8

        Behavior on risen { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutCubic } }

        Rectangle {
            width: parent.width
            height: Math.min(choices.height, root.height - cancelButton.height - 32)
            radius: 16
            color: Theme.row
            Accessible.role: Accessible.Dialog
            Accessible.name: title.text

            // Takes what falls between the buttons.
            MouseArea {
                anchors.fill: parent
            }
            Flickable {
                id: flick
                anchors.fill: parent
                contentHeight: choices.height
                boundsMovement: Flickable.FollowBoundsBehavior
                interactive: contentHeight > height
                clip: true
                T.ScrollBar.vertical: ThinScrollBar {}

                Column {
                    id: choices
                    width: parent.width

                    Text {
                        id: title
                        width: parent.width
                        visible: text !== ""
                        padding: 14
                        text: root.sheet ? root.sheet.title : ""
                        textFormat: Text.PlainText
                        wrapMode: Text.Wrap
                        horizontalAlignment: Text.AlignHCenter
                        color: Theme.textSoft
                        font.pixelSize: Theme.fontSmall
                        font.weight: Font.Medium
                    }
                    Repeater {
                        model: root.sheet ? root.sheet.otherButtons : []

                        SheetButton {
                            required property int index
                            required property string modelData

                            width: choices.width
                            text: modelData
                            lined: index > 0 || title.visible
                            focus: index === 0
                            onVisualFocusChanged: if (visualFocus) flick.contentY = Math.max(0, Math.min(y, flick.contentHeight - flick.height))
                            onClicked: root.sheet.click(index)
                        }
                    }
                }
            }
        }
        Rectangle {
            width: parent.width
            height: cancelButton.height
            radius: 16
            color: Theme.row

            SheetButton {
                id: cancelButton
                width: parent.width
                text: root.sheet ? root.sheet.cancelButton : ""
                font.weight: Font.Bold
                onClicked: root.cancel()
            }
        }
    }
}
