import QtQuick

// A row's heart: full when its radio is a favourite. An image set since the row was built covers its background.
ImageButton {
    required property string radio
    readonly property bool favourite: name === "list_fav_icon_full.png"

    name: outlet.normalImage === "" ? outlet.backgroundImage : outlet.normalImage
    pressedName: name
    text: (favourite ? "Retirer des favoris : " : "Ajouter aux favoris : ") + radio
}
