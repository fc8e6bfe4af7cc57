import QtQuick
import QtQuick.Templates as T
import Orvel.Kit

// A slim bar at the list's edge: seen while the list moves or the pointer is over it.
T.ScrollBar {
    id: root

    property color color: Theme.textSoft
    // Seen all the time, where nothing else shows that there is more.
    property bool steady: false

    implicitWidth: 10
    padding: 2
    minimumSize: 0.08
    Accessible.ignored: true
    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: root.color
        opacity: root.size >= 1 ? 0 : root.pressed ? 0.75 : root.active || root.hovered || root.steady ? 0.45 : 0

        Behavior on opacity { NumberAnimation { duration: Theme.slide } }
    }
}
