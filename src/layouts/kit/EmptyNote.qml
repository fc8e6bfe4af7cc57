import QtQuick
import Orvel.Containers
import Orvel.Kit

// A list's text while it has no rows and isn't being loaded.
Column {
    id: root

    required property bool empty
    required property string title
    required property string hint
    property string icon

    visible: empty && !ProgressHud.visible
    width: Math.min(320, (parent?.width ?? 0) - 48)
    spacing: 6

    NamedIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.icon !== ""
        width: 44
        height: 44
        name: root.icon
    }
    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.title
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontTitle
        font.weight: Font.DemiBold
    }
    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: 1.25
        text: root.hint
        textFormat: Text.PlainText
        color: Theme.textSoft
        font.pixelSize: Theme.fontSmall
    }
}
