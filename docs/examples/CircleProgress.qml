// The progress of an upload.
import QtQuick 2.15
import com.ostrel.im.component 1.0

CircleProgress {
    radius: 24
    color: "#1f6feb"

    NumberAnimation on progress {
        from: 0
        to: 1
        duration: 2000
    }
}
