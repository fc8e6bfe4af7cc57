import QtQuick
import Orvel.Kit

// What a form's field stands on; its line is stronger while it has the keyboard.
Rectangle {
    property bool active: false

    radius: 10
    color: Theme.row
    border.width: active ? 2 : 1
    border.color: active ? Theme.ring : Theme.fieldLine
}
