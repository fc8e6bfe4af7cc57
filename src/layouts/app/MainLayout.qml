import QtQuick
import Orvel.Containers
import Orvel.Kit

// The window: the root screen, the screen presented over it, the alert or action sheet in front, the progress overlay.
FocusScope {
    id: root

    required property WindowOutlet window
    readonly property QtObject question: window.alert ?? window.actionSheet
    // The same for what lies behind, which has to know before the focus is handed on.
    property bool asked: false
    readonly property ViewController presented: window.presentedViewController

    function giveWay(): void {
        asked = question !== null;
        LastInput.handFocusTo(window.alert ? alertPanel : window.actionSheet ? sheetPanel : screens);
    }

    focus: true
    Component.onCompleted: giveWay()
    onQuestionChanged: giveWay()
    // Within the screens: a question in front keeps the keyboard.
    onPresentedChanged: (presented ? presentedView : rootView).focus = true

    Rectangle {
        anchors.fill: parent
        color: Theme.ink
    }
    FocusScope {
        id: screens
        anchors.fill: parent
        enabled: !root.asked
        focus: true

        ScreenView {
            id: rootView
            anchors.fill: parent
            controller: root.window.rootViewController
            enabled: root.presented === null
            visible: root.presented === null
            focus: true
        }
        ScreenView {
            id: presentedView
            anchors.fill: parent
            controller: root.presented
        }
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
