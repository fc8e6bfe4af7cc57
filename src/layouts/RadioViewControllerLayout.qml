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

    Column {
        id: emptyText
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height + bar.height + root.screen.viewHeader.frame.height - height) / 2
        width: Math.min(320, parent.width - 48)
        spacing: 6
        visible: root.empty

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Pas encore de radios"
            color: Theme.text
            font.pixelSize: Theme.fontTitle
            font.weight: Font.DemiBold
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.25
            text: "Si la liste tarde, ouvrez le menu et choisissez « Radios » pour réessayer."
            color: Theme.textSoft
            font.pixelSize: Theme.fontSmall
        }
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
    }
    RadioViewHideShowLayout {
        id: floating
        screen: root.screen
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width - 16, Theme.pageWidth)
        y: root.barShown ? root.height - height - 8 : root.height
        visible: y < root.height
        enabled: root.barShown

        Behavior on y { NumberAnimation { duration: Theme.slide; easing.type: Easing.OutCubic } }
    }
}
