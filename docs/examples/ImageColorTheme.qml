// A card in the colours of a picture.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Rectangle {
    id: card

    property color ink: "black"

    width: 240
    height: 80
    color: theme.state === ImageColorTheme.Ready ? theme.themeColor : "white"

    ImageColorTheme {
        id: theme
        colorCount: 5
        source: "qrc:/qml/image/transparent.png"
        onReady: card.ink = getColor(1) // the colour farthest from the first
    }

    Text {
        anchors.centerIn: parent
        color: card.ink
        text: "In the picture's own colours"
    }
}
