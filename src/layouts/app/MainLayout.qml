import QtQuick
import Orvel.Containers
import Orvel.Kit

// The window: the root screen or the one presented over it, the alert or action sheet in front, the progress overlay.
FocusScope {
    id: root

    required property WindowOutlet window
    readonly property QtObject question: window.alert ?? window.actionSheet
    // The same for what lies behind, which has to know before the focus is handed on.
    property bool asked: false

    function giveWay(): void {
        asked = question !== null;
        LastInput.handFocusTo(window.alert ? alertPanel : window.actionSheet ? sheetPanel : screens);
    }

    focus: true
    Component.onCompleted: giveWay()
    onQuestionChanged: giveWay()

    Rectangle {
        anchors.fill: parent
        color: Theme.ink
    }
    ScreenStackView {
        id: screens
        anchors.fill: parent
        stack: root.window.screens
        edge: Qt.BottomEdge
        duration: Theme.slide
        enabled: !root.asked
        focus: true
    }
    AlertPanel {
        id: alertPanel
        anchors.fill: parent
        alert: root.window.alert
    }
    ActionSheetPanel {
        id: sheetPanel
        anchors.fill: parent
        sheet: root.window.actionSheet
    }
    HudOverlay {
        anchors.fill: parent
    }
}
