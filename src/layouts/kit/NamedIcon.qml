import QtQuick

// An image of the application by its name: "pstop.png" and "pstop" both name the drawing images/pstop.svg.
Image {
    required property string name

    source: name === "" ? "" : "qrc:/assets/images/" + name.replace(".png", "") + ".svg"
    sourceSize.width: width
    sourceSize.height: height
    fillMode: Image.PreserveAspectFit
}
