// Waits for a time inside a function; the loop deletes itself when it has ended.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Timer {
    id: timer

    function sleep(milliseconds) {
        const loop = EventLoopCreator.create()
        interval = milliseconds
        triggered.connect(loop.quit)
        start()
        loop.start()
    }
}
