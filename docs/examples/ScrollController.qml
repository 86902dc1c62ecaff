// A view that turns of the wheel move by pixels, without a flick.
import QtQuick 2.15
import com.ostrel.im.component 1.0

ScrollController {
    id: controller

    width: 200
    height: 120
    onWheel: view.contentY = Math.max(0, Math.min(view.contentHeight - view.height, view.contentY - y))

    ListView {
        id: view
        anchors.fill: parent
        interactive: false
        model: 100
        delegate: Text {
            text: "Message " + index
        }
    }
}
