pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Table

// Draws a table: its elements in view at their places, under the user's finger, wheel or keys. It writes the frame and the
// content offset back and follows the offset when the screen sets it.
Flickable {
    id: root

    required property TableViewOutlet outlet
    property alias delegate: rows.delegate
    // Room under the last element, for what floats over the list.
    property real bottomInset: 0
    property alias scrollBarColor: bar.color

    // Scrolls so far that the element and its neighbours can be seen.
    function reveal(top: real, height: real): void {
        contentY = Math.max(0, Math.min(contentHeight - root.height, Math.max(top + 2 * height - root.height + bottomInset, Math.min(contentY, top - height))));
    }

    contentWidth: width
    contentHeight: outlet.contentHeight + bottomInset
    flickableDirection: Flickable.VerticalFlick
    boundsMovement: Flickable.FollowBoundsBehavior
    clip: true
    onContentYChanged: outlet.contentOffset = contentY
    Accessible.role: Accessible.List

    Binding {
        target: root.outlet
        property: "frame"
        value: Qt.rect(root.x, root.y, root.width, root.height)
        restoreMode: Binding.RestoreNone
    }
    Connections {
        target: root.outlet

        function onContentOffsetChanged() {
            if (root.contentY !== root.outlet.contentOffset)
                root.contentY = root.outlet.contentOffset;
        }
    }
    T.ScrollBar.vertical: ThinScrollBar {
        id: bar
    }

    Repeater {
        id: rows
        model: root.outlet.elements
    }
}
