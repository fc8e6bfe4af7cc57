import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Outlets

// A field of several lines under its label, which takes what height is left on its page. What is typed goes back to the
// outlet. Tab leaves it.
FocusScope {
    id: root

    required property TextViewOutlet outlet
    required property string label

    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.minimumHeight: 108
    visible: !outlet.hidden

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
    FieldGround {
        anchors.fill: parent
        anchors.topMargin: title.height + 6
        active: input.activeFocus

        Flickable {
            id: flick
            anchors.fill: parent
            anchors.margins: 2
            boundsMovement: Flickable.FollowBoundsBehavior
            clip: true
            T.ScrollBar.vertical: ThinScrollBar {}

            T.TextArea.flickable: T.TextArea {
                id: input
                // The outlet's text is being taken over.
                property bool showing: false

                function show(): void {
                    if (text === root.outlet.text)
                        return;
                    showing = true;
                    text = root.outlet.text;
                    showing = false;
                }

                padding: 10
                focus: true
                color: Theme.text
                selectionColor: Theme.gold
                selectedTextColor: Theme.ink
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
                font.family: Theme.fontFamily
                font.pixelSize: Theme.fontBody
                selectByMouse: true
                Accessible.role: Accessible.EditableText
                Accessible.name: root.label
                Accessible.multiLine: true
                Component.onCompleted: {
                    input.show();
                    cursorPosition = length;
                }
                // Only what the user has changed: a text is shown without its finer spaces.
                onTextChanged: if (!showing) root.outlet.text = text
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

                Connections {
                    target: root.outlet

                    function onTextChanged() {
                        input.show();
                    }
                }
            }
        }
    }
}
