pragma ComponentBehavior: Bound
import QtQuick
import Orvel.Kit
import Orvel.Table

// Draws a strip: its items side by side, moved sideways by finger, wheel or keys.
Flickable {
    id: root

    required property CollectionViewOutlet outlet
    property alias delegate: items.delegate
    property alias spacing: row.spacing

    // Scrolls so far that the item and its neighbours can be seen.
    function reveal(left: real, width: real): void {
        contentX = Math.max(0, Math.min(contentWidth - root.width, left - width, Math.max(contentX, left + 2 * width - root.width)));
    }
    // Gives the keyboard to an item; to the first or last one for an index before or behind.
    function focusItem(index: real): void {
        items.itemAt(Math.max(0, Math.min(items.count - 1, index))).forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Theme.touch
    contentWidth: row.width
    contentHeight: height
    flickableDirection: Flickable.HorizontalFlick
    boundsMovement: Flickable.FollowBoundsBehavior
    clip: true
    Accessible.role: Accessible.PageTabList

    Row {
        id: row
        height: root.height

        Repeater {
            id: items
            model: root.outlet.elements
        }
    }
}
