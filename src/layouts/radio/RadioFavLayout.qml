pragma ComponentBehavior: Bound
import Orvel.Kit
import Orvel.Radio

// The favourite radios; the compact bar floats over the list's end while a radio plays.
ListPage {
    id: root

    required property RadioFav screen

    outlet: screen.tableCont
    title: screen.lblTitle
    emptyIcon: "list_fav_icon_full.png"
    emptyTitle: "Pas encore de favoris"
    emptyHint: "Touchez le cœur d'une radio de la liste : elle vous attendra ici."
    bottomInset: floating.shown ? floating.height + 16 : 0
    row: CellCustomRadio2Layout {
        table: root.table
    }
    onMenuClicked: screen.acctionMenu()
    onContactClicked: screen.ShowMessage()

    CompactBarLayout {
        id: floating
        bar: root.screen.viewHideShow
        title: root.screen.viewHideShow.bl1
        shown: !root.screen.viewHideShow.hidden
    }
}
