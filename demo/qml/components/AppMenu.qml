import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

Menu {
    id: menu

    padding: 6
    delegate: AppMenuItem {}
    background: Card {
        implicitWidth: 190
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 80 } }
}
