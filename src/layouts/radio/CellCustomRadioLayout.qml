import QtQuick
import Orvel.Kit
import Orvel.Radio

// One web radio of the list, with the title now on air.
RadioRow {
    id: root

    required property CellCustomRadio cell

    radio: cell
    Accessible.description: cell.lblDesc.text

    OutletText {
        outlet: root.cell.lblDesc
        width: parent.width
        color: Theme.textSoft
        font.pixelSize: Theme.fontSmall
    }
}
