import QtQuick
import Orvel.Kit

// What a form's field stands on; its line turns gold while the keyboard talks to it.
Rectangle {
    property bool active: false

    radius: 10
    color: Theme.row
    border.width: active ? 2 : 1
    border.color: active ? Theme.gold : Theme.fieldLine
}
