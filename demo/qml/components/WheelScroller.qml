import QtQuick 2.15
import com.ostrel.im.component 1.0

// Scrolls a Flickable as a desktop expects it: the wheel moves it in short eased steps, and a drag of the mouse
// is left to what lies inside, so that text can be selected. Put it behind the content and set `interactive` of
// the Flickable to false.
ScrollController {
    id: scroller

    property Flickable view
    readonly property real speed: 2.4 // a notch of the wheel is about seven lines of text

    onWheel: scrollBy(-y * speed)

    function scrollBy(distance) {
        const from = motion.running ? motion.to : view.contentY
        motion.stop()
        motion.to = clamp(from + distance)
        motion.start()
    }

    function stop() {
        motion.stop()
    }

    function clamp(y) {
        const end = view.originY + view.contentHeight + view.bottomMargin - view.height
        return Math.min(end, Math.max(view.originY - view.topMargin, y))
    }

    NumberAnimation {
        id: motion

        target: scroller.view
        property: "contentY"
        duration: 130
        easing.type: Easing.OutCubic
        // A list only estimates where it ends, until it has been there.
        onFinished: scroller.view.returnToBounds()
    }
}
