pragma ComponentBehavior: Bound
import Orvel.Kit
import Orvel.Radio

// The web radios under the large header of what plays now; the compact bar floats over the list's end once the header has
// scrolled away.
ListPage {
    id: root

    required property RadioViewController screen
    // Under the list's end: room for the bar, so that the header can scroll away and the bar come wherever the list scrolls.
    readonly property real barRoom: screen.viewNowPlaying.hidden ? 0 : floating.height + 16

    outlet: screen.tableCont
    title: screen.lblTitle
    headerHeight: screen.viewHeader.frame.height
    emptyTitle: "Pas encore de radios"
    emptyHint: "Si la liste tarde, ouvrez le menu et choisissez « Radios » pour réessayer."
    bottomInset: outlet.contentHeight + barRoom > table.height ? Math.max(barRoom, headerHeight + 1 + table.height - outlet.contentHeight) : 0
    header: NowPlayingHeaderLayout {
        screen: root.screen
        listEmpty: root.empty
        width: root.table.width
    }
    row: CellCustomRadioLayout {
        table: root.table
    }
    onMenuClicked: screen.acctionMenu()
    onContactClicked: screen.acctionEmail()

    CompactBarLayout {
        id: floating
        bar: root.screen.viewHideShow
        title: root.screen.viewHideShow.bl1.text === "" ? root.screen.viewHeader.hl1 : root.screen.viewHideShow.bl1
        shown: !root.screen.viewHideShow.hidden && !root.screen.viewNowPlaying.hidden
    }
}
