import QtQuick
import Orvel.App
import Orvel.Kit

// A section's title over a thin line.
Item {
    id: root

    required property MenuHeader cell
    required property real rowTop
    required property real rowHeight

    y: rowTop
    height: rowHeight

    OutletText {
        outlet: root.cell.title
        x: 5
        y: 5
        width: parent.width - x
        height: 20
        verticalAlignment: Text.AlignVCenter
        color: Theme.menuHeader
        font.pixelSize: Theme.fontTitle
        Accessible.role: Accessible.Heading
        Accessible.name: text.trim()
    }
    Rectangle {
        x: 3
        y: 29
        width: parent.width
        height: 1
        color: Theme.menuHeader
    }
}
