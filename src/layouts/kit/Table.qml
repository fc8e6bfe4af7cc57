pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Table

// Draws a table: its elements in view at their places, under the user's finger, wheel or keys. It writes the frame and the
// content offset back, follows the offset when the screen sets it, and glides where the screen wants it to. It keeps the
// keyboard while the row that had it is out of view.
FocusScope {
    id: root

    required property TableViewOutlet outlet
    property alias delegate: rows.delegate
    // Room under the last element, for what floats over the list.
    property real bottomInset: 0
    property alias scrollBarColor: bar.color
    // Lets keys click the element that has the keyboard. One for all elements: one each would slow scrolling by a fifth.
    readonly property Item clicks: PressKeys {
        parent: root
        button: root.Window.activeFocusItem as T.AbstractButton
    }

    // Scrolls so far that the element and its neighbours can be seen.
    function reveal(top: real, height: real): void {
        keys.reveal(top, height);
    }

    Accessible.role: Accessible.List
    Keys.onPressed: (event) => event.accepted = keys.press(event.key)

    TableKeys {
        id: keys
        table: root.outlet
        elements: flick.contentItem
    }
    Binding {
        target: root.outlet
        property: "bottomInset"
        value: root.bottomInset
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: root.outlet
        property: "frame"
        value: Qt.rect(root.x, root.y, root.width, root.height)
        restoreMode: Binding.RestoreNone
    }
    Connections {
        target: root.outlet

        function onContentOffsetChanged() {
            if (flick.contentY === root.outlet.contentOffset)
                return;
            glide.stop();
            flick.contentY = root.outlet.contentOffset;
        }
        function onScrollWanted(offset: real) {
            glide.to = offset;
            glide.restart();
        }
    }
    NumberAnimation {
        id: glide
        target: flick
        property: "contentY"
        duration: Theme.slide
        easing.type: Easing.OutCubic
    }
    Flickable {
        id: flick
        anchors.fill: parent
        contentWidth: width
        contentHeight: root.outlet.contentHeight + root.bottomInset
        flickableDirection: Flickable.VerticalFlick
        boundsMovement: Flickable.FollowBoundsBehavior
        clip: true
        onContentYChanged: root.outlet.contentOffset = contentY
        onMovementStarted: glide.stop()
        T.ScrollBar.vertical: ThinScrollBar {
            id: bar
        }

        Repeater {
            id: rows
            model: root.outlet.elements
        }
    }
}
