pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.Kit
import Orvel.Radio

// The FM frequencies, a row a city.
Rectangle {
    id: root

    required property FrequenceController screen

    color: Theme.page

    TopBar {
        id: bar
        z: 1
        width: parent.width
        title: root.screen.lblTitle
        untitled: "Fréquences"
        onButtonClicked: root.screen.MenuController()

        IconButton {
            name: "contact"
            text: "Contacter la station"
            onClicked: root.screen.ShowMessage()
        }
    }
    EmptyNote {
        anchors.centerIn: parent
        empty: root.screen.tableCont.contentHeight === 0
        title: "Pas encore de fréquences"
        hint: "Si la liste tarde, ouvrez le menu et choisissez « Fréquences » pour réessayer."
    }
    Table {
        id: list
        anchors.fill: parent
        anchors.topMargin: bar.height
        outlet: root.screen.tableCont
        delegate: DelegateChooser {
            role: "kind"

            DelegateChoice {
                roleValue: "row"
                CellCustomFrequenceLayout {
                    table: list
                }
            }
            DelegateChoice {
                Item {}
            }
        }
    }
}
