import QtQuick
import Orvel.Kit
import Orvel.Outlets

// A label's text on one line, cut off at its end.
Text {
    required property LabelOutlet outlet

    // What a server can send as a title is not to hold up the window.
    text: outlet.text.slice(0, 1000)
    visible: !outlet.hidden && text !== ""
    textFormat: Text.PlainText
    color: Theme.text
    elide: Text.ElideRight
    maximumLineCount: 1
    font.pixelSize: Theme.fontBody
}
