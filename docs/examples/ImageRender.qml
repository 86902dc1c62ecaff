// A picture of a message: the thumbnail that came with it is seen, blurred, until the picture is loaded.
import QtQuick 2.15
import com.ostrel.im.component 1.0

ImageRender {
    id: picture

    property string thumbnail: "" // base64
    property string file: ":/qml/image/transparent.png"

    width: 240
    height: 160
    blurRadius: 4
    backgroundSource: thumbnail
    backgroundFillMode: ImageRender.PreserveAspectCrop
    source: file
    sourceFillMode: ImageRender.PreserveAspectCrop
    topLeftRadius: 8
    topRightRadius: 8

    Text {
        anchors.centerIn: parent
        visible: picture.statusSource === ImageRender.Error
        text: "This picture can't be shown"
    }
}
