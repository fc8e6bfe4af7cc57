import QtQuick
import QtQuick.Templates as T
import Orvel.Kit

// A slim bar at the list's edge: seen while the list moves or the pointer is over it.
T.ScrollBar {
    id: root

    property color color: Theme.textSoft

    implicitWidth: 10
    padding: 2
    minimumSize: 0.08
    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: root.color
        opacity: root.size >= 1 ? 0 : root.pressed ? 0.75 : root.active || root.hovered ? 0.45 : 0

        Behavior on opacity { NumberAnimation { duration: Theme.slide } }
    }
}
