import QtQml 2.15
import "theme"
import "tour"

// Two people on one desk: Alice's window and Bob's.
QtObject {
    id: main

    property url serverUrl
    property bool fresh: false
    property bool touring: false
    property QtObject robot: null
    property QtObject desktop: null
    property QtObject census: null
    property QtObject pictureDesk: null
    property QtObject samples: null

    readonly property ChatWindow alice: ChatWindow {
        user: 1
        startWith: "aurora"
        first: true
        pictureDesk: main.pictureDesk
        samples: main.samples
        serverUrl: main.serverUrl
        fresh: main.fresh
        x: 60
        y: 60
        visible: true
    }

    readonly property ChatWindow bob: ChatWindow {
        user: 2
        startWith: "1-2"
        pictureDesk: main.pictureDesk
        samples: main.samples
        serverUrl: main.serverUrl
        fresh: main.fresh
        x: 420
        y: 180
        visible: true
    }

    readonly property Component tour: Component {
        Tour {
            alice: main.alice
            bob: main.bob
            robot: main.robot
            desktop: main.desktop
            census: main.census
        }
    }

    Component.onCompleted: {
        Theme.pictures = samples
        if (touring)
            tour.createObject(main)
    }
}
