import QtQuick
import Orvel.Kit

// Marks the control that the keyboard talks to.
Rectangle {
    color: "transparent"
    border.color: Theme.gold
    border.width: 2
    radius: Theme.radius
}
