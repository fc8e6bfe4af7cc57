import QtQuick
import Orvel.Ui

// A row's heart: full when its radio is a favourite.
IconButton {
    id: root

    required property ButtonOutlet outlet
    required property string radio
    readonly property bool favourite: name === "list_fav_icon_full.png"

    name: outlet.normalImage === "" ? outlet.backgroundImage : outlet.normalImage
    text: (favourite ? "Retirer des favoris : " : "Ajouter aux favoris : ") + radio
    visible: !outlet.hidden
    enabled: outlet.enabled
    onClicked: outlet.touchUpInside()
}
