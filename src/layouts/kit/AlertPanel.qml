pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Orvel.Containers
import Orvel.Kit

// The alert in front, over a shade that blocks everything beneath. Escape and Back choose the first answer. A message
// that is too long for the window scrolls, by the arrow keys as well.
FocusScope {
    id: root

    required property AlertView alert

    function scroll(distance: real): void {
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, flick.contentY + distance));
    }

    visible: alert !== null
    onAlertChanged: flick.contentY = 0
    Keys.onUpPressed: scroll(-40)
    Keys.onDownPressed: scroll(40)
    Keys.onEscapePressed: alert.click(0)
    Keys.onBackPressed: alert.click(0)

    Rectangle {
        anchors.fill: parent
        color: Theme.shade
        opacity: root.visible ? 0.55 : 0

        Behavior on opacity { NumberAnimation { duration: Theme.quick } }
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: (wheel) => wheel.accepted = true
    }
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(300, root.width - 48)
        height: content.height + 40
        radius: 20
        color: Theme.row
        scale: root.visible ? 1 : 0.92
        Accessible.role: Accessible.AlertMessage
        Accessible.name: title.text + (title.text === "" || message.text === "" ? "" : ". ") + message.text

        Behavior on scale { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutBack } }

        Column {
            id: content
            x: 20
            y: 20
            width: parent.width - 40
            spacing: 8

            Text {
                id: title
                width: parent.width
                visible: text !== ""
                text: root.alert ? root.alert.title : ""
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
                color: Theme.text
                font.pixelSize: Theme.fontTitle
                font.weight: Font.Bold
            }
            Flickable {
                id: flick
                readonly property real room: root.height - 88 - 3 * content.spacing - title.height - answers.height

                width: parent.width + 16
                height: Math.min(message.implicitHeight, Math.max(40, room))
                visible: message.text !== ""
                contentHeight: message.implicitHeight
                boundsMovement: Flickable.FollowBoundsBehavior
                interactive: contentHeight > height
                clip: true
                T.ScrollBar.vertical: ThinScrollBar {
                    steady: true
                }

                Text {
                    id: message
                    width: content.width
                    text: root.alert ? root.alert.message : ""
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    lineHeight: 1.25
                    color: title.visible ? Theme.textSoft : Theme.text
                    font.pixelSize: Theme.fontBody
                }
            }
            Item {
                width: 1
                height: 4
            }
            Grid {
                id: answers
                width: parent.width
                columns: buttons.count === 2 ? 2 : 1
                spacing: 10

                Repeater {
                    id: buttons
                    model: root.alert ? root.alert.buttons : []

                    PanelButton {
                        required property int index
                        required property string modelData

                        width: (answers.width - (answers.columns - 1) * answers.spacing) / answers.columns
                        text: modelData
                        preferred: index === buttons.count - 1
                        focus: preferred
                        onClicked: root.alert.click(index)
                    }
                }
            }
        }
    }
}
