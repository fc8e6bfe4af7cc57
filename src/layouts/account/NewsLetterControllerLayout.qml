import QtQuick
import Orvel.Account
import Orvel.Kit

// Subscribing to the newsletter.
FormPage {
    id: root

    required property NewsLetterController screen

    title: "Newsletter"
    buttonText: "Fermer"
    panel: screen.viewCenter
    onButtonClicked: screen.acctionMenu()
    actions: IconButton {
        name: "contact"
        text: "Contacter la station"
        onClicked: root.screen.ShowMessage()
    }

    FormIntro {
        title: "Restez à l'écoute"
        hint: "Les nouveautés, les concours et les concerts, par e-mail."
    }
    FormField {
        outlet: root.screen.txtPass
        page: root
        label: "Votre nom"
    }
    FormField {
        outlet: root.screen.txtEmail
        page: root
        label: "Adresse e-mail"
        hint: "vous@exemple.fr"
        inputMethodHints: Qt.ImhEmailCharactersOnly
    }
    PrimaryButton {
        text: "S'inscrire"
        onClicked: root.screen.acctionLogin()
    }
}
