pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.qmlmodels
import Orvel.Kit
import Orvel.Outlets
import Orvel.Table

// A screen that is a list: a bar with menu and contact button, and under it the table, or what is said while that has no rows.
// What is placed inside floats over the list.
Rectangle {
    id: root

    required property TableViewOutlet outlet
    required property LabelOutlet title
    property alias untitled: bar.untitled
    required property string emptyTitle
    required property string emptyHint
    property alias emptyIcon: note.icon
    property alias bottomInset: list.bottomInset
    // The elements of the table: each a component with the roles of TableView's elements as required properties.
    required property Component row
    property Component header: Item {}
    // The height of what the table shows besides rows.
    property real headerHeight: 0
    readonly property bool empty: outlet.contentHeight <= headerHeight
    readonly property Table table: list
    signal menuClicked
    signal contactClicked

    color: Theme.page

    TopBar {
        id: bar
        z: 1
        width: parent.width
        title: root.title
        onButtonClicked: root.menuClicked()

        IconButton {
            name: "contact"
            text: "Contacter la station"
            onClicked: root.contactClicked()
        }
    }
    EmptyNote {
        id: note
        anchors.horizontalCenter: parent.horizontalCenter
        y: (root.height + bar.height + root.headerHeight - height) / 2
        empty: root.empty
        title: root.emptyTitle
        hint: root.emptyHint
    }
    Table {
        id: list
        anchors.fill: parent
        anchors.topMargin: bar.height
        outlet: root.outlet
        delegate: DelegateChooser {
            role: "kind"

            DelegateChoice { roleValue: "header"; delegate: root.header }
            DelegateChoice { roleValue: "row"; delegate: root.row }
            DelegateChoice { Item {} }
        }
    }
}
