import QtQuick 2.15

// A tree of plain objects: each has a `text` and, for a branch, `elements`, an array of like objects or a list model.
// A subtree exists only while its row is open.
ScrollArea {
    id: view

    // The root object, or an array of several; null shows nothing.
    property var model
    property real nodeHeight: 25
    property real itemHeight: 25
    property real columnIndent: 10
    // The object, and the subtree's loader, of the selected row.
    property var currentNode
    property var currentItem
    // Every row that exists follows when this changes.
    property bool expanded
    // How the text of a row is drawn; `model` is the row's object.
    property Component delegateNode: Text {
        font.pixelSize: 12
        verticalAlignment: Text.AlignVCenter
        color: view.currentNode === model ? "white" : "#333333"
        text: model && model.text ? model.text : ""
    }
    property Component delegateItem: Text {
        font.pixelSize: 12
        verticalAlignment: Text.AlignVCenter
        color: view.currentNode === model ? "white" : "#333333"
        text: model.text ? model.text : ""
    }

    implicitWidth: 200
    implicitHeight: 160
    contentWidth: content.width
    contentHeight: content.height

    Loader {
        id: content
        property var elements: view.model
        sourceComponent: treeBranch
        onLoaded: item.isRoot = true
    }

    Component {
        id: treeBranch

        Item {
            id: root

            property bool isRoot: false
            // One object stands for an array of it. An array's own entries are asked for by their index: what a
            // repeater hands out of an array are copies, and the selected row is told by identity.
            readonly property bool isListModel: !!elements && elements.rowCount !== undefined
            readonly property var rows: !elements || isListModel || Array.isArray(elements) ? elements : [elements]

            implicitWidth: column.implicitWidth
            implicitHeight: column.implicitHeight

            Column {
                id: column

                // The row of the parent, which draws it over this place.
                Item {
                    width: 1
                    height: root.isRoot ? 0 : view.nodeHeight
                }

                Repeater {
                    model: root.rows

                    Item {
                        id: filler

                        property var _model: root.isListModel ? model : root.rows[index]
                        readonly property bool isBranch: !!_model && !!_model.elements

                        width: Math.max(loader.width, row.width) + view.columnIndent
                        height: Math.max(row.height, loader.height)

                        // The selection bar, across the whole view.
                        Rectangle {
                            id: rowfill
                            color: "steelblue"
                            x: view.mapToItem(rowfill, 0, 0).x
                            width: view.contentWidth > view.width ? view.contentWidth : view.width
                            height: filler.isBranch ? view.nodeHeight : view.itemHeight
                            visible: view.currentNode === filler._model
                        }

                        MouseArea {
                            id: mousearea_bg
                            anchors.fill: rowfill
                            preventStealing: true
                            onPressed: {
                                view.currentNode = filler._model;
                                view.currentItem = loader;
                            }
                            onDoubleClicked: loader.expanded = !loader.expanded
                        }

                        Row {
                            id: row

                            Item {
                                width: view.nodeHeight
                                height: view.nodeHeight
                                opacity: filler.isBranch ? 1 : 0

                                // The application's picture, an arrow to the right.
                                Image {
                                    id: expander
                                    source: "image/right.png"
                                    anchors.centerIn: parent
                                    opacity: mouse.containsMouse ? 1 : 0.7
                                    rotation: loader.expanded ? 90 : 0
                                    Behavior on rotation {
                                        RotationAnimator {
                                            duration: 120
                                        }
                                    }
                                }

                                MouseArea {
                                    id: mouse
                                    anchors.fill: parent
                                    hoverEnabled: true
                                    onClicked: loader.expanded = !loader.expanded
                                }
                            }

                            Loader {
                                property var model: filler._model
                                sourceComponent: filler.isBranch ? view.delegateNode : view.delegateItem
                                anchors.verticalCenter: parent.verticalCenter
                                onLoaded: item.height = filler.isBranch ? view.nodeHeight : view.itemHeight
                            }
                        }

                        // The subtree.
                        Loader {
                            id: loader
                            property var node: filler._model
                            property bool expanded: false
                            property var elements: filler._model ? filler._model.elements : undefined
                            property var text: filler._model ? filler._model.text : undefined
                            x: view.columnIndent
                            height: expanded ? implicitHeight : 0
                            sourceComponent: expanded && !!elements ? treeBranch : undefined

                            Connections {
                                target: view
                                function onExpandedChanged() {
                                    loader.expanded = view.expanded;
                                }
                            }
                        }
                    }
                }
            }
        }
    }
}
