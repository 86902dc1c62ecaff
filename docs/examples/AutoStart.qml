// A switch in the settings. The client keeps the value; the system's entry follows it.
import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0

CheckBox {
    text: "Start with the system"
    onToggled: AutoStart.enable = checked
}
