import QtQuick
import Orvel.Kit

// A row of a table: to press it selects it.
TableItem {
    required property int row

    onClicked: table.outlet.selectRow(section, row)
}
