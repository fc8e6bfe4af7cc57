import QtQuick
import QtQuick.Layouts
import Orvel.Composers
import Orvel.Kit

// A mail to finish: to whom, about what, its text, and the picture that goes with it.
FormPage {
    id: root

    required property MailComposeViewController screen

    title: "Nouveau message"
    fills: true
    onButtonClicked: screen.cancelButton.touchUpInside()
    Component.onCompleted: (screen.recipientsField.text === "" ? recipients : body).focus = true

    FormField {
        id: recipients
        outlet: root.screen.recipientsField
        page: root
        label: "À"
        hint: "Adresse e-mail"
        inputMethodHints: Qt.ImhEmailCharactersOnly
    }
    FormField {
        outlet: root.screen.subjectField
        page: root
        label: "Objet"
    }
    TextArea {
        id: body
        outlet: root.screen.bodyView
        label: "Message"
    }
    AttachmentRow {
        picture: root.screen.attachmentImage
        name: root.screen.attachmentName
        note: root.screen.attachmentNote
    }
    RowLayout {
        spacing: 12

        SecondaryButton {
            Layout.preferredWidth: 1
            outlet: root.screen.saveButton
            text: "Enregistrer"
        }
        PrimaryButton {
            Layout.preferredWidth: 1
            outlet: root.screen.sendButton
            text: "Envoyer"
        }
    }
}
