import QtQuick
import Orvel.Composers
import Orvel.Kit

// A text message to finish: to whom, and what.
FormPage {
    id: root

    required property MessageComposeViewController screen

    title: "Nouveau SMS"
    fills: true
    onButtonClicked: screen.cancelButton.touchUpInside()
    Component.onCompleted: (screen.recipientsField.text === "" ? recipients : body).focus = true

    FormField {
        id: recipients
        outlet: root.screen.recipientsField
        page: root
        label: "À"
        hint: "Numéro de téléphone"
        inputMethodHints: Qt.ImhDialableCharactersOnly
    }
    TextArea {
        id: body
        outlet: root.screen.bodyView
        label: "Message"
    }
    PrimaryButton {
        outlet: root.screen.sendButton
        text: "Envoyer"
    }
}
