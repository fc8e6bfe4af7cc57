import QtQuick
import QtQuick.Layouts
import Orvel.Kit
import Orvel.Outlets

// A picture that goes with a message: a small view of it, its name and what there is to say about it. Its name's outlet hides
// it.
Rectangle {
    id: root

    required property ImageViewOutlet picture
    required property LabelOutlet name
    required property LabelOutlet note

    Layout.fillWidth: true
    implicitHeight: Math.max(72, texts.implicitHeight + 20)
    visible: !name.hidden
    radius: 10
    color: Theme.placeholder
    Accessible.role: Accessible.StaticText
    Accessible.name: "Pièce jointe : " + name.text + ". " + note.text

    Picture {
        id: thumbnail
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 52
        height: 52
        outlet: root.picture
    }
    Column {
        id: texts
        anchors.verticalCenter: parent.verticalCenter
        x: thumbnail.x + thumbnail.width + 12
        width: parent.width - x - 12
        spacing: 2

        OutletText {
            width: parent.width
            outlet: root.name
            elide: Text.ElideMiddle
            font.weight: Font.DemiBold
        }
        OutletText {
            width: parent.width
            outlet: root.note
            color: Theme.textSoft
            wrapMode: Text.Wrap
            maximumLineCount: 4
            font.pixelSize: Theme.fontSmall
        }
    }
}
