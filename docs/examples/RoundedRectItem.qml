// A bubble that points to its sender: one corner is sharp, the fill runs from light to dark.
import QtQuick 2.15
import com.ostrel.im.component 1.0

RoundedRectItem {
    width: 200
    height: 60
    topLeftRadius: 12
    topRightRadius: 12
    bottomRightRadius: 12
    borderColor: "#8ab4f8"
    gradient: [
        { position: 0, color: "#e8f0fe" },
        { position: 1, color: "#c2d7fb" }
    ]
}
