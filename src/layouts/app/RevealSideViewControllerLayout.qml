import QtQuick
import Orvel.Containers
import Orvel.Kit

// The centre screen, and at its left the panel that it uncovers when it is pushed aside by the menu button or by a pan.
// While the panel is open, the centre's visible edge takes a tap or a pan to close it; so do Escape and Back.
FocusScope {
    id: root

    required property RevealSideViewController screen
    readonly property real panelWidth: Math.min(width - 56, 320)
    // The screen's own value, set before the focus is handed on, since both sides' enabling depends on it.
    property bool open: false
    readonly property real target: screen.isOpen ? panelWidth : 0
    // 0 closed, 1 open.
    readonly property real openness: panelWidth > 0 ? centre.x / panelWidth : 0

    Keys.enabled: screen.isOpen
    Keys.onEscapePressed: screen.close(true)
    Keys.onBackPressed: screen.close(true)
    onPanelWidthChanged: centre.x = target

    NumberAnimation {
        id: slide
        target: centre
        property: "x"
        to: root.target
        easing.type: Easing.OutCubic
    }
    Connections {
        target: root.screen

        function onIsOpenChanged() {
            slide.duration = root.screen.animated ? Theme.slide : 0;
            slide.restart();
            root.open = root.screen.isOpen;
            if (root.open)
                LastInput.handFocusInto(panel);
            else
                LastInput.handFocusTo(centreView);
        }
    }

    ScreenView {
        id: panel
        x: (root.openness - 1) * width / 4
        width: root.panelWidth
        height: parent.height
        visible: centre.x > 0 || root.open
        enabled: root.open
        controller: root.screen.leftController
    }
    Item {
        id: centre
        width: parent.width
        height: parent.height

        ScreenView {
            id: centreView
            anchors.fill: parent
            controller: root.screen.centerController
            enabled: !root.open
            focus: true
        }
        Rectangle {
            anchors.fill: parent
            color: Theme.shade
            opacity: 0.5 * root.openness
            visible: opacity > 0
        }
        // Not for keys, which have Escape.
        PressButton {
            anchors.fill: parent
            visible: root.open
            focusPolicy: Qt.NoFocus
            text: "Fermer le menu"
            onClicked: root.screen.close(true)
        }
        Rectangle {
            width: 1
            height: parent.height
            color: Theme.inkLine
            visible: root.openness > 0
        }
    }
    DragHandler {
        id: pan
        target: centre
        enabled: root.screen.leftController !== null && (root.screen.isOpen || root.screen.panOpens)
        yAxis.enabled: false
        xAxis.minimum: 0
        xAxis.maximum: root.panelWidth
        dragThreshold: 16
        onActiveChanged: active ? slide.stop() : root.settle()
    }

    // After a pan: where it was flung to, or else to the side that the centre is nearer to; but back where it was when the input
    // gate has closed meanwhile.
    function settle(): void {
        const speed = pan.centroid.velocity.x;
        if (!LastInput.isGated())
            (Math.abs(speed) > 400 ? speed > 0 : centre.x > panelWidth / 2) ? screen.open(true) : screen.close(true);
        slide.duration = Theme.slide;
        slide.restart();
    }
}
