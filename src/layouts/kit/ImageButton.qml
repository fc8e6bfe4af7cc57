import QtQuick
import Orvel.Kit
import Orvel.Outlets

// A button of a screen, drawn by its images for the normal and the highlighted state.
IconButton {
    required property ButtonOutlet outlet

    name: outlet.normalImage
    pressedName: outlet.highlightedImage === "" ? outlet.normalImage : outlet.highlightedImage
    visible: !outlet.hidden
    enabled: outlet.enabled
    onClicked: outlet.touchUpInside()
}
