import QtQuick
import Orvel.Kit
import Orvel.Shell
import Orvel.Ui

// The window: the root screen, the screen presented over it, the alert in front, the progress overlay.
FocusScope {
    id: root

    required property WindowOutlet window
    readonly property AlertView alert: window.alert
    readonly property ViewController presented: window.presentedViewController

    focus: true
    onAlertChanged: (alert ? alertPanel : screens).forceActiveFocus()
    onPresentedChanged: (presented ? presentedView : rootView).forceActiveFocus()

    Rectangle {
        anchors.fill: parent
        color: Theme.ink
    }
    FocusScope {
        id: screens
        anchors.fill: parent
        enabled: root.alert === null
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
        alert: root.alert
    }
    HudOverlay {
        anchors.fill: parent
        hud: root.window.hud
    }
}
