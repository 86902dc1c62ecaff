import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../components"
import "../theme"
import "../model/palette.js" as Palette

// Every way in which the module shows a picture, side by side.
Item {
    id: page

    property QtObject samples: null
    property QtObject pictureDesk: null
    property bool shown: false // made when it is first wanted, and then kept
    readonly property string picture: samples ? samples.landscape(1) : ""
    readonly property string portrait: samples ? samples.of(3) : ""
    readonly property Item content: loader.item

    signal pictureClicked(string path)

    onVisibleChanged: {
        if (visible)
            shown = true
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }

    Loader {
        id: loader

        anchors.fill: parent
        active: page.shown
        sourceComponent: galleryComponent
    }

    Component {
        id: galleryComponent

        Flickable {
            id: view

            readonly property alias palettes: palettes
            readonly property alias mapButton: mapButton
            readonly property alias mapPath: map.path

            contentHeight: column.height + 40
            interactive: false
            clip: true

            WheelScroller {
                width: view.width
                height: view.contentHeight
                view: view
            }

            Column {
                id: column

                x: 28
                y: 20
                width: view.width - 56
                spacing: 20

                Item {
                    width: parent.width
                    height: 36

                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("Pictures")
                        color: Theme.ink
                        font.pixelSize: 20
                        font.weight: Font.DemiBold
                    }

                    PushButton {
                        id: mapButton

                        anchors.right: parent.right
                        enabled: !map.drawing
                        text: map.drawing ? qsTr("Drawing the map…") : qsTr("Open a map of 12,000 × 9,000")
                        onClicked: map.open()
                    }
                }

                ExhibitRow {
                    title: qsTr("Rounded on the graphics card")

                    Repeater {
                        model: [{ name: qsTr("stretched"), mode: RoundedImage.Stretch, radius: 0 },
                                { name: qsTr("fitted"), mode: RoundedImage.PreserveAspectFit, radius: 0 },
                                { name: qsTr("cropped"), mode: RoundedImage.PreserveAspectCrop, radius: 16 },
                                { name: qsTr("one corner square"), mode: RoundedImage.PreserveAspectCrop, radius: -1 },
                                { name: qsTr("round"), mode: RoundedImage.PreserveAspectCrop, radius: 46 }]

                        Exhibit {
                            id: rounded

                            required property var modelData

                            caption: modelData.name

                            Rectangle {
                                anchors.fill: parent
                                visible: rounded.modelData.radius === 0
                                color: Theme.field
                            }

                            RoundedImage {
                                x: rounded.modelData.radius === 46 ? 20 : 0
                                width: rounded.modelData.radius === 46 ? 92 : 132
                                height: 92
                                fillMode: rounded.modelData.mode
                                radius: Math.max(0, rounded.modelData.radius)
                                radiusTopLeft: rounded.modelData.radius < 0 ? 30 : 0
                                radiusTopRight: radiusTopLeft
                                radiusBottomRight: radiusTopLeft
                                source: page.portrait
                            }
                        }
                    }
                }

                ExhibitRow {
                    title: qsTr("Over a blurred background")

                    Repeater {
                        // A background is blurred once, so each radius has a picture of its own.
                        model: [{ name: qsTr("fitted over cropped"), front: ImageRender.PreserveAspectFit, blur: 3, behind: 0 },
                                { name: qsTr("fitted, no blur"), front: ImageRender.PreserveAspectFit, blur: 0, behind: 1 },
                                { name: qsTr("stretched"), front: ImageRender.Stretch, blur: 3, behind: 0 },
                                { name: qsTr("cropped"), front: ImageRender.PreserveAspectCrop, blur: 3, behind: 0 }]

                        Exhibit {
                            id: blended

                            required property var modelData

                            caption: modelData.name

                            ImageRender {
                                anchors.fill: parent
                                sourceFillMode: blended.modelData.front
                                backgroundFillMode: ImageRender.PreserveAspectCrop
                                blurRadius: blended.modelData.blur
                                topLeftRadius: 14
                                topRightRadius: 14
                                bottomLeftRadius: 14
                                bottomRightRadius: 14
                                backgroundSource: page.samples && page.pictureDesk
                                                  ? page.pictureDesk.thumbnail(page.samples.landscape(blended.modelData.behind)) : ""
                                source: page.portrait
                            }
                        }
                    }
                }

                ExhibitRow {
                    title: qsTr("Decorated")

                    Repeater {
                        model: [{ name: qsTr("stretched"), mode: DrawableImage.Stretch },
                                { name: qsTr("fitted"), mode: DrawableImage.PreserveAspectFit },
                                { name: qsTr("cropped, rounded"), mode: DrawableImage.PreserveAspectCrop, radius: 16 },
                                { name: qsTr("tiled"), mode: DrawableImage.Tile, tile: true },
                                { name: qsTr("as it is"), mode: DrawableImage.Pad, tile: true },
                                { name: qsTr("over itself, blurred"), mode: DrawableImage.PreserveAspectFit, dizzy: true, portrait: true },
                                { name: qsTr("blurred"), mode: DrawableImage.PreserveAspectCrop, blur: 12 },
                                { name: qsTr("faded"), mode: DrawableImage.PreserveAspectCrop, faded: true },
                                { name: qsTr("dashed border"), mode: DrawableImage.PreserveAspectCrop, border: 6, radius: 16 },
                                { name: qsTr("dark mode"), mode: DrawableImage.PreserveAspectFit, dark: true, portrait: true }]

                        Exhibit {
                            id: decorated

                            required property var modelData

                            caption: modelData.name

                            DrawableImage {
                                anchors.fill: parent
                                fillMode: decorated.modelData.mode
                                radius: decorated.modelData.radius || 0
                                borderWidth: decorated.modelData.border || 0
                                borderColor: Theme.accent
                                borderStyle: Qt.DashLine
                                dizzyBackground: decorated.modelData.dizzy || false
                                blurRatio: decorated.modelData.blur || 0
                                opacity: decorated.modelData.faded ? 0.35 : 1
                                darkMode: decorated.modelData.dark || false
                                backgroundColor: "#c9d8ff"
                                backgroundGradientColor: "#ffd6e5"
                                gradientRotation: 45
                                source: decorated.modelData.tile ? "qrc:/ui/image/icon.ico"
                                      : decorated.modelData.portrait ? page.portrait : page.picture

                            }
                        }
                    }
                }

                ExhibitRow {
                    title: qsTr("Rectangles and progress")

                    Repeater {
                        model: [{ name: qsTr("four radii"), corners: [30, 4, 4, 30], gradient: [] },
                                { name: qsTr("gradient"), corners: [14, 14, 14, 14],
                                  gradient: [{ position: 0, color: "#8ec5fc" }, { position: 1, color: "#e0c3fc" }] }]

                        Exhibit {
                            id: rectangle

                            required property var modelData

                            caption: modelData.name

                            RoundedRectItem {
                                anchors.fill: parent
                                topLeftRadius: rectangle.modelData.corners[0]
                                topRightRadius: rectangle.modelData.corners[1]
                                bottomLeftRadius: rectangle.modelData.corners[2]
                                bottomRightRadius: rectangle.modelData.corners[3]
                                borderWidth: 2
                                color: Theme.accentSoft
                                borderColor: Theme.accent
                                gradient: rectangle.modelData.gradient
                            }
                        }
                    }

                    Repeater {
                        model: [0.15, 0.5, 0.8, 1]

                        Exhibit {
                            id: vessel

                            required property real modelData

                            caption: Math.round(modelData * 100) + " %"

                            Rectangle {
                                x: 25
                                y: 5
                                width: 82
                                height: width
                                radius: width / 2
                                color: Theme.field
                            }

                            CircleProgress {
                                x: 26
                                y: 6
                                radius: 40
                                color: Theme.accent
                                progress: vessel.modelData
                            }
                        }
                    }
                }

                ExhibitRow {
                    title: qsTr("Colours of a picture")

                    Repeater {
                        id: palettes

                        model: [{ name: "CUBE", algorithm: ImageColorTheme.CUBE }, { name: "MMCQ", algorithm: ImageColorTheme.MMCQ }]

                        Exhibit {
                            id: palette

                            required property var modelData
                            property var colors: []

                            caption: modelData.name

                            ImageColorTheme {
                                colorCount: 8
                                algorithm: palette.modelData.algorithm
                                source: page.picture
                                onReady: palette.colors = Palette.colors(this)
                            }

                            Grid {
                                anchors.centerIn: parent
                                columns: 4
                                spacing: 3

                                Repeater {
                                    model: palette.colors

                                    Rectangle {
                                        required property var modelData

                                        width: 28
                                        height: 38
                                        radius: 6
                                        color: modelData
                                    }
                                }
                            }
                        }
                    }

                    Repeater {
                        model: page.samples ? [1, 2, 3] : []

                        Exhibit {
                            id: landscape

                            required property int modelData

                            caption: qsTr("opens in the viewer")

                            RoundedImage {
                                anchors.fill: parent
                                radius: 12
                                fillMode: RoundedImage.PreserveAspectCrop
                                cache: true
                                source: page.samples.landscape(landscape.modelData)

                                MouseArea {
                                    anchors.fill: parent
                                    cursorShape: Qt.PointingHandCursor
                                    onClicked: page.pictureClicked(page.samples.landscape(landscape.modelData))
                                }
                            }
                        }
                    }
                }
            }

            QtObject {
                id: map

                property bool drawing: false
                property string path

                function open() {
                    if (path !== "") {
                        page.pictureClicked(path)
                        return
                    }
                    drawing = true
                    page.samples.drawMap()
                }
            }

            Connections {
                target: page.samples

                function onMapReady(path) {
                    // Both windows hear of it; only one has asked.
                    if (!map.drawing)
                        return
                    map.drawing = false
                    map.path = path
                    if (path !== "")
                        page.pictureClicked(path)
                }
            }
        }
    }
}
