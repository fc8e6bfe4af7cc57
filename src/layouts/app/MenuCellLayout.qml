import QtQuick
import Orvel.App
import Orvel.Kit

// A row of the menu: its glyph and its title.
TableRow {
    id: root

    required property MenuCell cell
    // The glyphs in the order of all rows, and where each section begins among them.
    readonly property list<string> glyphs: [
        "radios", "favoris", "titres", "top", "news", "sons", "videos", "concours", "agenda", "grille", "frequences",
        "compte", "newsletter", "site", "partage", "partage", "partage", "partage", "mentions"
    ]
    readonly property list<int> sections: [0, 4, 9, 11]

    text: cell.textLabel.text
    pressedColor: Theme.inkRaised

    NamedIcon {
        x: 5
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        name: "menu/" + root.glyphs[root.sections[root.section] + root.row]
    }
    OutletText {
        outlet: root.cell.textLabel
        x: 41
        width: parent.width - x - 12
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.inkText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        font.pixelSize: Theme.fontBody
        font.weight: Font.Bold
    }
}
