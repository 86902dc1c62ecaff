import QtQuick 2.15
import "../theme"

// A line icon, drawn from a path on a 24 by 24 grid.
Canvas {
    id: icon

    property string name
    property color color: Theme.inkSoft
    property real size: 20

    readonly property var paths: ({
        chat: "M4 6 a2 2 0 0 1 2 -2 h12 a2 2 0 0 1 2 2 v8 a2 2 0 0 1 -2 2 h-8 l-4 4 v-4 a2 2 0 0 1 -2 -2 z",
        smile: "M12 3.5 a8.5 8.5 0 1 0 0.01 0 z M8.5 14 a4.4 4.4 0 0 0 7 0 M9 9.2 v0.9 M15 9.2 v0.9",
        search: "M10.5 4.5 a6 6 0 1 0 0.01 0 z M15 15 l5 5",
        send: "M12 19.5 v-14 M6 11 l6 -6 l6 6",
        close: "M6.5 6.5 l11 11 M17.5 6.5 l-11 11",
        up: "M6 14.5 l6 -6 l6 6",
        down: "M6 9.5 l6 6 l6 -6",
        link: "M10 14 a4 4 0 0 0 5.7 0 l3 -3 a4 4 0 0 0 -5.7 -5.7 l-1 1 M14 10 a4 4 0 0 0 -5.7 0 l-3 3 a4 4 0 0 0 5.7 5.7 l1 -1",
        mail: "M4 6.5 h16 v11 h-16 z M4 7 l8 6 l8 -6",
        tag: "M9.5 4.5 l-2 15 M16.5 4.5 l-2 15 M4.5 9.5 h16 M3.5 14.5 h16",
        person: "M12 4 a4 4 0 1 0 0.01 0 z M4.5 20 a7.5 7.5 0 0 1 15 0",
        file: "M7 3.5 h6.5 l4.5 4.5 v12.5 h-11 z M13 3.8 v4.7 h4.7 M10 13 h5 M10 16.5 h5",
        picture: "M4 5.5 h16 v13 h-16 z M4.5 16.5 l4.5 -5 l3.5 3.5 l3 -3 l4 4.5 M15.2 8.6 v0.4",
        contacts: "M8.5 5 a3 3 0 1 0 0.01 0 z M3 18.5 a5.5 5.5 0 0 1 11 0 M16.5 8 a2.4 2.4 0 1 0 0.01 0 z M16 14.3 a4.4 4.4 0 0 1 5 4.2",
        settings: "M5 7 h7 M17 7 h2 M14.5 4.5 a2.5 2.5 0 1 0 0.01 0 z M5 17 h2 M12 17 h7 M9.5 14.5 a2.5 2.5 0 1 0 0.01 0 z",
        scissors: "M6.5 15.5 a2.3 2.3 0 1 0 0.01 0 z M17.5 15.5 a2.3 2.3 0 1 0 0.01 0 z M8 16 L17 4 M16 16 L7 4",
        code: "M9 7 l-5 5 l5 5 M15 7 l5 5 l-5 5",
        gallery: "M4 4 h6.5 v6.5 h-6.5 z M13.5 4 h6.5 v6.5 h-6.5 z M4 13.5 h6.5 v6.5 h-6.5 z M13.5 13.5 h6.5 v6.5 h-6.5 z",
        sending: "M12 6 v6 l4 2 M12 3.5 a8.5 8.5 0 1 0 0.01 0 z",
        sent: "M4.5 12.5 l5 5 l10 -11",
        failed: "M12 6 v7 M12 16.6 v0.8 M12 3.5 a8.5 8.5 0 1 0 0.01 0 z"
    })

    width: size
    height: size
    onNameChanged: requestPaint()
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        context.reset()
        context.scale(width / 24, height / 24)
        context.lineWidth = 1.8
        context.lineCap = "round"
        context.lineJoin = "round"
        context.strokeStyle = color
        context.path = paths[name] || ""
        context.stroke()
    }
}
