import QtQuick
import Orvel.Kit
import Orvel.Radio

// What plays now. A narrow window shows the radio's picture edge to edge with the texts on its foot; a wide one sets it as a
// cover beside the texts, before a soft blur of itself. While no radio was chosen, an invitation.
Item {
    id: root

    required property RadioViewController screen
    required property bool listEmpty
    required property real rowTop
    required property real rowHeight
    readonly property bool wide: width >= Theme.wideFrom
    readonly property bool chosen: !screen.viewNowPlaying.hidden
    // How much of it a window shows at once: a phone on its side is too low for all.
    readonly property real seen: Math.min(height, screen.tableCont.frame.height)
    readonly property real cover: Math.min(272, seen - 64)
    readonly property real side: wide ? Math.max(Theme.margin * 2, (width - Theme.pageWidth) / 2) : 20

    y: rowTop
    height: rowHeight
    clip: true

    Binding {
        target: root.screen.viewHeader
        property: "frame"
        value: Qt.rect(0, root.y, root.width, root.height)
        restoreMode: Binding.RestoreNone
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.ink
    }
    NamedIcon {
        x: root.wide ? root.width - root.side - width * 0.8 : root.width - width * 0.72
        y: -height * 0.22
        width: 300
        height: 300
        name: "emblem-faint"
        visible: !root.chosen || picture.empty
    }
    PictureItem {
        anchors.fill: parent
        picture: root.screen.viewHeader.himgsinger
        backdrop: true
        visible: root.wide && root.chosen
    }
    Rectangle {
        anchors.fill: parent
        visible: root.wide && root.chosen && !picture.empty
        color: Theme.ink
        // Leaves the softer text a contrast of 4.5 to 1 before white.
        opacity: 0.76
    }

    Picture {
        id: picture
        outlet: root.screen.viewHeader.himgsinger
        placeholder: root.wide
        visible: root.chosen && !outlet.hidden
        x: root.wide ? root.side : 0
        y: root.wide ? (root.seen - height) / 2 : 0
        width: root.wide ? root.cover : root.width
        height: root.wide ? root.cover : root.height
        radius: root.wide ? 16 : 0
    }
    // From where the texts begin it is dark enough for them before white, also in a low window, where they stand higher.
    Rectangle {
        id: scrim
        readonly property real foot: texts.y / root.seen

        width: parent.width
        height: root.seen
        visible: !root.wide && root.chosen && !picture.empty
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, 0.55) }
            GradientStop { position: scrim.foot * 0.35; color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, 0.08) }
            GradientStop { position: scrim.foot * 0.7; color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, 0.3) }
            GradientStop { position: scrim.foot; color: Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, 0.78) }
            GradientStop { position: 1; color: Theme.ink }
        }
    }
    Rectangle {
        y: root.seen
        width: parent.width
        height: parent.height - y
        visible: !root.wide && root.chosen && !picture.empty
        color: Theme.ink
    }

    Row {
        visible: root.chosen
        x: root.width - width - (root.wide ? root.side - 4 : 8)
        y: root.wide ? picture.y : 8

        ShareButton {
            name: "share-facebook"
            text: "Partager sur Facebook"
            onClicked: root.screen.acctionFacebook()
        }
        ShareButton {
            name: "share-twitter"
            text: "Partager sur Twitter"
            onClicked: root.screen.acctionTwitter()
        }
    }

    Column {
        id: texts
        visible: root.chosen
        x: root.wide ? picture.x + picture.width + 36 : root.side
        y: root.wide ? (root.seen - height) / 2 : root.seen - height - 20
        width: root.width - x - root.side
        spacing: root.wide ? 28 : 16

        Row {
            width: parent.width
            spacing: 12

            Picture {
                id: logo
                outlet: root.screen.viewHeader.himg
                placeholder: false
                visible: !empty && !outlet.hidden
                width: 52
                height: 52
                radius: 12
            }
            Column {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x
                spacing: 2

                OutletText {
                    outlet: root.screen.viewHeader.hl1
                    width: parent.width
                    color: Theme.inkText
                    font.pixelSize: root.width < 900 ? Theme.fontLarge : 30
                    font.weight: Font.Bold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                OutletText {
                    outlet: root.screen.viewHeader.hl2
                    width: parent.width
                    color: Theme.inkTextSoft
                    font.pixelSize: root.wide ? Theme.fontBody : Theme.fontSmall
                }
            }
        }
        Item {
            width: parent.width
            height: play.height

            Column {
                anchors.verticalCenter: parent.verticalCenter
                x: root.wide ? play.width + 20 : 0
                width: parent.width - play.width - 20
                spacing: 3

                OutletText {
                    outlet: root.screen.viewHeader.hl3
                    width: parent.width
                    color: Theme.inkText
                    font.pixelSize: Theme.fontTitle
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                OutletText {
                    outlet: root.screen.viewHeader.hl4
                    width: parent.width
                    color: Theme.inkTextSoft
                    font.pixelSize: Theme.fontBody
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            ImageButton {
                id: play
                outlet: root.screen.viewHeader.hbtnPlay
                x: root.wide ? 0 : parent.width - width
                iconSize: 64
                text: outlet.tag !== 0 ? "Pause" : "Lecture"
                ringColor: Theme.inkText
            }
        }
    }

    Column {
        visible: !root.chosen && !root.listEmpty
        x: root.side
        y: root.seen - height - 32
        width: Math.min(480, root.width - 2 * root.side)
        spacing: 8

        Text {
            width: parent.width
            wrapMode: Text.Wrap
            text: "Choisissez une radio"
            textFormat: Text.PlainText
            color: Theme.inkText
            font.pixelSize: 28
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            width: parent.width
            wrapMode: Text.Wrap
            lineHeight: 1.2
            text: (root.seen < root.height ? "Faites défiler la liste et touchez une radio" : "Touchez une radio de la liste") + " : elle démarre aussitôt, en direct."
            textFormat: Text.PlainText
            color: Theme.inkTextSoft
            font.pixelSize: Theme.fontBody
        }
    }
}
