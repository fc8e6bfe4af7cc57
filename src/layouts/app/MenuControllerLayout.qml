pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.App
import Orvel.Kit

// The side menu: the search field over the grouped rows.
Rectangle {
    id: root

    required property MenuController screen

    color: Theme.night

    NamedIcon {
        x: 17
        y: (Theme.barHeight - height) / 2
        width: 80
        height: 24
        name: "wordmark"
        Accessible.role: Accessible.Heading
        Accessible.name: "Orvel"
    }
    SearchField {
        id: field
        x: 14
        y: Theme.barHeight
        width: parent.width - 28
        outlet: root.screen.searchBar
        visible: !outlet.hidden
    }
    Table {
        id: list
        anchors.fill: parent
        anchors.topMargin: field.y + field.height + 8
        anchors.leftMargin: 12
        outlet: root.screen.tableCont
        bottomInset: 20
        scrollBarColor: Theme.inkTextSoft
        delegate: DelegateChooser {
            role: "kind"

            DelegateChoice {
                roleValue: "header"
                MenuHeaderLayout {
                    width: list.width
                }
            }
            DelegateChoice {
                roleValue: "row"
                MenuCellLayout {
                    table: list
                }
            }
            DelegateChoice {
                Item {}
            }
        }
    }
}
