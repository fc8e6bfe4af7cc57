import QtQuick
import QtQuick.Layouts
import Orvel.Kit
import Orvel.Outlets

// The button that a form leads to. With an outlet it is a button of its screen.
PanelButton {
    property ButtonOutlet outlet: null

    // A touch leaves the keyboard with the field that has it: a page that is lifted for it would sink under the finger.
    focusPolicy: Qt.TabFocus
    Layout.fillWidth: true
    implicitHeight: 50
    preferred: true
    visible: outlet === null || !outlet.hidden
    enabled: outlet === null || outlet.enabled
    opacity: outlet === null || outlet.enabled ? 1 : 0.45
    onClicked: if (outlet !== null) outlet.touchUpInside()
}
