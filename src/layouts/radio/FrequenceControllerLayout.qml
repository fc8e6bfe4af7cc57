pragma ComponentBehavior: Bound
import Orvel.Kit
import Orvel.Radio

// The FM frequencies, a row a city.
ListPage {
    id: root

    required property FrequenceController screen

    outlet: screen.tableCont
    title: screen.lblTitle
    untitled: "Fréquences"
    emptyTitle: "Pas encore de fréquences"
    emptyHint: "Si la liste tarde, ouvrez le menu et choisissez « Fréquences » pour réessayer."
    row: CellCustomFrequenceLayout {
        table: root.table
    }
    onMenuClicked: screen.MenuController()
    onContactClicked: screen.ShowMessage()
}
