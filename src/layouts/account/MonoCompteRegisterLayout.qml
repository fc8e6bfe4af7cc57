import QtQuick
import Orvel.Account
import Orvel.Kit

// A new account.
FormPage {
    id: root

    required property MonoCompteRegister screen

    title: "Créer un compte"
    buttonIcon: "back"
    buttonText: "Retour"
    panel: screen.viewCenter
    lift: screen.lift
    onButtonClicked: screen.acctionBack()
    actions: IconButton {
        name: "contact"
        text: "Contacter la station"
        onClicked: root.screen.ShowMessage()
    }

    Binding {
        target: root.screen.view
        property: "frame"
        value: Qt.rect(0, 0, root.width, root.height)
        restoreMode: Binding.RestoreNone
    }
    FormIntro {
        title: "Bienvenue"
        hint: "Un nom, une adresse e-mail, un mot de passe, et c'est fait."
    }
    FormField {
        outlet: root.screen.txtIdentity
        page: root
        label: "Nom d'utilisateur"
    }
    FormField {
        outlet: root.screen.txtEmail
        page: root
        label: "Adresse e-mail"
        hint: "vous@exemple.fr"
        inputMethodHints: Qt.ImhEmailCharactersOnly
    }
    FormField {
        outlet: root.screen.txtPass
        page: root
        label: "Mot de passe"
        password: true
    }
    PrimaryButton {
        text: "Créer mon compte"
        onClicked: root.screen.acctionLogin()
    }
}
