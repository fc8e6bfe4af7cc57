pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.Kit
import Orvel.Radio

// The web radios under the large header of what plays now; the compact bar floats over the list's end once the header has
// scrolled away.
Rectangle {
    id: root

    required property RadioViewController screen
    readonly property bool barShown: !screen.viewHideShow.hidden && !screen.viewNowPlaying.hidden
    readonly property real headerHeight: screen.viewHeader.frame.height
    readonly property bool empty: screen.tableCont.contentHeight <= headerHeight
    // Under the list's end: room for the bar, so that the header can scroll away and the bar come wherever the list scrolls.
    readonly property real barRoom: screen.viewNowPlaying.hidden ? 0 : floating.height + 16

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
            onClicked: root.screen.acctionEmail()
        }
    }
    EmptyNote {
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height + bar.height + root.headerHeight - height) / 2
        empty: root.empty
        title: "Pas encore de radios"
        hint: "Si la liste tarde, ouvrez le menu et choisissez « Radios » pour réessayer."
    }
    Table {
        id: list
        anchors.fill: parent
        anchors.topMargin: bar.height
        outlet: root.screen.tableCont
        bottomInset: outlet.contentHeight + root.barRoom > height ? Math.max(root.barRoom, root.headerHeight + 1 + height - outlet.contentHeight) : 0
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
