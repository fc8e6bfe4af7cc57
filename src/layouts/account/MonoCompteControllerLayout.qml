import QtQuick
import Orvel.Account
import Orvel.Kit

// Logging in, and the way to an account for those who have none.
FormPage {
    id: root

    required property MonoCompteController screen

    title: "Mon compte"
    buttonText: "Fermer"
    panel: screen.viewCenter
    onButtonClicked: screen.acctionMenu()
    actions: IconButton {
        name: "contact"
        text: "Contacter la station"
        onClicked: root.screen.ShowMessage()
    }

    FormIntro {
        title: "Connectez-vous"
        hint: "Gardez vos radios préférées et retrouvez vos titres."
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
    CheckRow {
        outlet: root.screen.btnCheck
        text: "Se souvenir de moi"
    }
    PrimaryButton {
        text: "Se connecter"
        onClicked: root.screen.acctionLogin()
    }
    SecondaryButton {
        text: "Créer un compte"
        onClicked: root.screen.acctionRegister()
    }
}
