import QtQuick
import Orvel.Kit
import Orvel.Outlets

// A picture at a URL: a placeholder until there is one, a ring while one is on its way.
Item {
    id: root

    required property ImageViewOutlet outlet
    property real radius: Theme.radius
    property bool placeholder: true
    readonly property alias empty: item.empty
    readonly property bool centred: outlet.indicatorCenter === Qt.point(0, 0)

    visible: !outlet.hidden
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        visible: root.placeholder && item.opacity < 1
        radius: root.radius
        color: Theme.placeholder

        NamedIcon {
            anchors.centerIn: parent
            width: Math.min(parent.width, 96)
            height: width
            name: "radio-placeholder"
            visible: !root.outlet.loading
        }
    }
    PictureItem {
        id: item
        anchors.fill: parent
        picture: root.outlet
        radius: root.radius
        opacity: empty ? 0 : 1

        Behavior on opacity { NumberAnimation { duration: Theme.slide } }
    }
    CircularProgress {
        x: (root.centred ? root.width / 2 : root.outlet.indicatorCenter.x) - width / 2
        y: (root.centred ? root.height / 2 : root.outlet.indicatorCenter.y) - height / 2
        width: Math.min(32, root.width * 0.5)
        height: width
        visible: root.outlet.loading && root.width > 32
        value: root.outlet.progress
    }
}
