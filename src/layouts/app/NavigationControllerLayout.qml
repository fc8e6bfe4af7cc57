import QtQuick
import Orvel.Containers
import Orvel.Kit

// The top screen of a stack, under a bar that leads back unless the stack hides it.
FocusScope {
    id: root

    required property NavigationController screen

    Rectangle {
        id: bar
        width: parent.width
        height: root.screen.navigationBarHidden ? 0 : Theme.barHeight
        visible: height > 0
        color: Theme.ink

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            x: 6
            name: "back"
            text: "Retour"
            onClicked: root.screen.popViewController(true)
        }
    }
    ScreenStackView {
        anchors.fill: parent
        anchors.topMargin: bar.height
        stack: root.screen.screens
        duration: Theme.slide
        focus: true
    }
}
