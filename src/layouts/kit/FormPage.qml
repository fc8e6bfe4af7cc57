import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Orvel.Kit
import Orvel.Outlets

// A screen to fill in: a bar with the way out, which Escape and Back take as well, and under it a column of fields that
// scrolls when the window is too low for it. In a wide window the column is a card in the middle. What is placed inside stands
// in the column.
FocusScope {
    id: root

    property string title
    property string buttonIcon: "close"
    property string buttonText: "Annuler"
    // The card's line, where a screen sets one.
    property BorderedViewOutlet panel: null
    // The column takes the page's whole height, for a field that grows.
    property bool fills: false
    // How many points the page stands above its place, to keep a field clear of the keyboard. It doesn't scroll meanwhile.
    property int lift: 0
    property alias actions: bar.actions
    default property alias content: column.data
    readonly property bool wide: width >= Theme.wideFrom
    readonly property Item focused: Window.activeFocusItem
    signal buttonClicked

    // Where `item`, inside the column, stands on the page while that isn't scrolled.
    function placeOf(item: Item): rect {
        const place = item.mapToItem(flick.contentItem, 0, 0, item.width, item.height);
        return Qt.rect(place.x, place.y + bar.height, place.width, place.height);
    }
    // Scrolls so far that `item` and what labels it can be seen.
    function reveal(item: Item): void {
        if (lift !== 0 || !holds(item))
            return;
        const top = item.mapToItem(flick.contentItem, 0, 0).y;
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, Math.max(top + item.height + 16 - flick.height, Math.min(flick.contentY, top - 40))));
    }
    // Whether `item` stands in the column.
    function holds(item: Item): bool {
        return item !== null && (item === column || holds(item.parent));
    }

    onFocusedChanged: reveal(focused)
    onLiftChanged: if (lift !== 0) flick.contentY = 0
    transform: Translate {
        id: shift
        y: -root.lift

        Behavior on y { NumberAnimation { id: anim; duration: Motion.reduced ? 0 : 300 } }
    }
    Keys.onEscapePressed: buttonClicked()
    Keys.onBackPressed: buttonClicked()

    Rectangle {
        width: parent.width
        height: parent.height - Math.min(0, shift.y)
        color: Theme.page
    }
    TopBar {
        id: bar
        width: parent.width
        untitled: root.title
        buttonIcon: root.buttonIcon
        buttonText: root.buttonText
        onButtonClicked: root.buttonClicked()
    }
    Flickable {
        id: flick
        anchors.fill: parent
        anchors.topMargin: bar.height
        contentHeight: card.height + 2 * card.y
        boundsMovement: Flickable.FollowBoundsBehavior
        // What hangs over the page's end comes into sight while the page stands higher.
        clip: shift.y === 0
        interactive: root.lift === 0
        T.ScrollBar.vertical: ThinScrollBar {}

        Rectangle {
            id: card
            readonly property real inset: root.wide ? (root.height < 480 ? 16 : 32) : root.panel === null ? 0 : 16

            anchors.horizontalCenter: parent.horizontalCenter
            y: root.wide ? Math.max(16, Math.min(48, (flick.height - column.implicitHeight - 2 * inset) / 2)) : Theme.margin
            width: Math.min(flick.width - 2 * Theme.margin, 560)
            height: Math.max(column.implicitHeight + 2 * inset, root.fills ? Math.min(flick.height - 2 * y, root.wide ? 640 : flick.height) : 0)
            radius: 16
            color: root.wide || root.panel !== null ? Theme.row : "transparent"
            border.width: root.panel === null ? 0 : root.panel.borderWidth
            border.color: root.panel === null ? "transparent" : root.panel.borderColor

            ColumnLayout {
                id: column
                anchors.fill: parent
                anchors.margins: card.inset
                spacing: 14
            }
        }
    }
}
