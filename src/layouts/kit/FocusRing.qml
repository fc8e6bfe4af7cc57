import QtQuick
import Orvel.Kit

// Marks the control that has the keyboard.
Rectangle {
    color: "transparent"
    border.color: Theme.ring
    border.width: 2
    radius: Theme.radius
}
