pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.Kit
import Orvel.Radio

// The favourite radios; the compact bar floats over the list's end while a radio plays.
Rectangle {
    id: root

    required property RadioFav screen
    readonly property bool barShown: !screen.viewHideShow.hidden

    color: Theme.page

    TopBar {
        id: bar
        z: 1
        width: parent.width
        title: root.screen.lblTitle
        onButtonClicked: root.screen.acctionMenu()

        IconButton {
            name: "contact"
            text: "Contacter la station"
            onClicked: root.screen.ShowMessage()
        }
    }
    EmptyNote {
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height + bar.height - height) / 2
        empty: root.screen.tableCont.contentHeight <= 0
        icon: "list_fav_icon_full.png"
        title: "Pas encore de favoris"
        hint: "Touchez le cœur d'une radio de la liste : elle vous attendra ici."
    }
    Table {
        id: list
        anchors.fill: parent
        anchors.topMargin: bar.height
        outlet: root.screen.tableCont
        bottomInset: root.barShown ? floating.height + 16 : 0
        delegate: DelegateChooser {
            role: "kind"

            DelegateChoice {
                roleValue: "row"
                CellCustomRadio2Layout {
                    table: list
                }
            }
            DelegateChoice {
                Item {}
            }
        }
    }
    NowPlayingBar {
        id: floating
        picture: root.screen.bimgsinger
        logo: root.screen.bimg
        title: root.screen.bl1
        artist: root.screen.bl2
        play: root.screen.bplay
        shown: root.barShown
    }
}
