import QtQuick
import Orvel.Kit
import Orvel.Ui

// A label's text on one line, cut off at its end.
Text {
    required property LabelOutlet outlet

    text: outlet.text
    visible: !outlet.hidden && text !== ""
    textFormat: Text.PlainText
    color: Theme.text
    elide: Text.ElideRight
    font.pixelSize: Theme.fontBody
}
