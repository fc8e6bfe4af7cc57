pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.App
import Orvel.Kit

// The web radios under the large header of what plays now; the compact bar floats over the list's end once the header has
// scrolled away.
Rectangle {
    id: root

    required property RadioViewController screen
    readonly property bool barShown: !screen.viewHideShow.hidden && !screen.viewNowPlaying.hidden
    readonly property bool empty: screen.tableCont.contentHeight <= screen.viewHeader.frame.height

    color: Theme.page

    EmptyNote {
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height + bar.height + root.screen.viewHeader.frame.height - height) / 2
        empty: root.empty
        title: "Pas encore de radios"
        hint: "Si la liste tarde, ouvrez le menu et choisissez « Radios » pour réessayer."
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
                roleValue: "header"
                RadioViewHeaderLayout {
                    screen: root.screen
                    listEmpty: root.empty
                    width: list.width
                }
            }
            DelegateChoice {
                roleValue: "row"
                CellCustomRadioLayout {
                    table: list
                }
            }
            DelegateChoice {
                Item {}
            }
        }
    }
    TopBar {
        id: bar
        width: parent.width
        title: root.screen.lblTitle
        onButtonClicked: root.screen.acctionMenu()

        IconButton {
            name: "contact"
            text: "Contacter la station"
            onClicked: root.screen.acctionEmail()
        }
    }
    NowPlayingBar {
        id: floating
        picture: root.screen.bimgsinger
        logo: root.screen.bimg
        title: root.screen.bl1.text === "" ? root.screen.hl1 : root.screen.bl1
        artist: root.screen.bl2
        play: root.screen.bplay
        shown: root.barShown
    }
}
