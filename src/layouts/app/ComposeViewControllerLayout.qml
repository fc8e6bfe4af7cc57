import QtQuick
import QtQuick.Layouts
import Orvel.Composers
import Orvel.Kit

// What goes to a share page: a text, a link, a picture.
FormPage {
    id: root

    required property ComposeViewController screen

    title: "Partager sur " + screen.serviceName.text
    onButtonClicked: screen.cancelButton.touchUpInside()
    Component.onCompleted: body.focus = true

    TextArea {
        id: body
        outlet: root.screen.textView
        label: "Votre message"
        Layout.minimumHeight: 160
    }
    LinkRow {
        url: root.screen.urlLabel
    }
    AttachmentRow {
        picture: root.screen.imageView
        name: root.screen.imageName
        note: root.screen.imageNote
    }
    PrimaryButton {
        outlet: root.screen.sendButton
        text: "Continuer sur " + root.screen.serviceName.text
    }
}
