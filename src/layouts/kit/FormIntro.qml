import QtQuick
import QtQuick.Layouts
import Orvel.Kit

// What a form is for, over its fields.
Column {
    id: root

    required property string title
    required property string hint

    Layout.fillWidth: true
    Layout.bottomMargin: 4
    spacing: 4

    Text {
        width: parent.width
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontLarge
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Text {
        width: parent.width
        text: root.hint
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        lineHeight: 1.25
        color: Theme.textSoft
        font.pixelSize: Theme.fontBody
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
