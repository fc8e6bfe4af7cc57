pragma Singleton
import QtQuick
import Orvel.Kit

// Colours, sizes and fonts of the whole application. Sizes are points.
QtObject {
    // The station's gold: the one accent. On white it is for shapes only; as text it stands on the dark grounds.
    readonly property color gold: "#bf8e0d"
    // What has the keyboard is ringed in it: at least 3 to 1 before every ground of this file, dark or light.
    readonly property color ring: "#a0750a"
    // The dark grounds: bars and header, and the menu.
    readonly property color ink: "#15120d"
    readonly property color inkRaised: "#211c14"
    readonly property color inkLine: "#332c20"
    readonly property color night: "#090806"
    readonly property color field: "#2b2721"
    readonly property color inkText: "#ffffff"
    readonly property color inkTextSoft: "#cfc7b8"
    // The light grounds: the page and its rows.
    readonly property color page: "#f5f2eb"
    readonly property color row: "#ffffff"
    readonly property color rowPressed: "#f3ecdc"
    readonly property color rowLine: "#ebe5d9"
    readonly property color text: "#1c1810"
    readonly property color textSoft: "#6a6255"
    // A field's line, seen clearly against row and page.
    readonly property color fieldLine: "#968c7a"
    readonly property color placeholder: "#efeae0"
    readonly property color shade: "#000000"
    // The menu's section titles and lines.
    readonly property color menuHeader: Qt.rgba(126 / 255, 90 / 255, 19 / 255, 1)

    readonly property int touch: 44
    readonly property int barHeight: 56
    readonly property int margin: 16
    readonly property int radius: 8
    // What a screen shows is no wider than this, and stands in the middle of a wider window.
    readonly property int pageWidth: 800
    // From here on a window counts as wide.
    readonly property int wideFrom: 640

    readonly property string fontFamily: "Inter"
    readonly property int fontSmall: 13
    readonly property int fontBody: 15
    readonly property int fontTitle: 17
    readonly property int fontLarge: 22

    // How long a small change and a slide take, in milliseconds; 0 where the system asks for reduced motion.
    readonly property int quick: Motion.reduced ? 0 : 120
    readonly property int slide: Motion.reduced ? 0 : 260
}
