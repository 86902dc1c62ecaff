// A picture with round corners and a border, fitted over its own blur.
import QtQuick 2.15
import com.ostrel.im.component 1.0

DrawableImage {
    width: 160
    height: 120
    source: "qrc:/qml/image/transparent.png"
    fillMode: DrawableImage.PreserveAspectFit
    dizzyBackground: true
    radius: 12
    borderWidth: 2
    borderColor: "#d0d7de"
}
