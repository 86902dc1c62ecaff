import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../components"
import "../model"
import "../theme"

// What can be set: the window, the desktop, the looks and the way to the service.
Item {
    id: page

    property ChatClient client
    property var hotKey: null // the QxtGlobalShortcut, if this window has one
    property string wallpaperPath // what the switch for the wallpaper takes
    readonly property alias macSwitch: macSwitch
    readonly property alias autoStartSwitch: autoStartSwitch
    readonly property alias wallpaperSwitch: wallpaperSwitch
    readonly property alias hotKeyField: hotKeyField
    readonly property alias hostField: hostField
    readonly property alias portField: portField
    readonly property alias checkButton: checkButton
    readonly property alias proxyResult: proxyResult
    readonly property alias forgetButton: forgetButton

    signal forgetRequested()

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Text {
        x: 28
        y: 20
        text: qsTr("Settings")
        color: Theme.ink
        font.pixelSize: 20
        font.weight: Font.DemiBold
    }

    Flickable {
        id: view

        anchors { fill: parent; topMargin: 60 }
        contentHeight: column.height + 24
        interactive: false
        clip: true

        WheelScroller {
            width: view.width
            height: view.contentHeight
            view: view
        }

        Rectangle {
            x: 28
            width: column.width
            height: column.height
            radius: 12
            color: Theme.panel
            border { width: 1; color: Theme.line }
        }

        Column {
            id: column

            x: 28
            width: Math.min(720, page.width - 56)

            SettingRow {
                title: qsTr("Round window buttons")
                detail: qsTr("Three of them, at the left of the title")

                OnOff {
                    id: macSwitch

                    checked: page.client.settings.macButtons
                    onToggled: page.client.settings.macButtons = checked
                }
            }

            SettingRow {
                title: qsTr("Closing minimises")
                detail: qsTr("The window stays in the task bar")

                OnOff {
                    checked: page.client.settings.minimizeOnClose
                    onToggled: page.client.settings.minimizeOnClose = checked
                }
            }

            SettingRow {
                title: qsTr("Start with the system")
                detail: qsTr("As soon as you log on")

                OnOff {
                    id: autoStartSwitch

                    checked: page.client.settings.autoStart
                    onToggled: page.client.settings.autoStart = checked
                }
            }

            SettingRow {
                title: qsTr("Hot key")
                detail: page.hotKey ? qsTr("Brings this window to the front from anywhere") : qsTr("Only the first window has one")

                TextEntry {
                    id: hotKeyField

                    width: 160
                    enabled: page.hotKey !== null
                    text: page.client.settings.hotKey
                    onAccepted: page.client.settings.hotKey = text
                }
            }

            SettingRow {
                title: qsTr("Wallpaper")
                detail: qsTr("A picture behind the messages; its colours become the client's")

                OnOff {
                    id: wallpaperSwitch

                    checked: page.client.settings.wallpaper !== ""
                    onToggled: page.client.settings.wallpaper = checked ? page.wallpaperPath : ""
                }
            }

            SettingRow {
                title: qsTr("Proxy check")
                detail: proxyResult.text

                Row {
                    spacing: 8

                    TextEntry {
                        id: hostField

                        width: 150
                        text: "127.0.0.1"
                    }

                    TextEntry {
                        id: portField

                        width: 70
                        text: "1080"
                    }

                    PushButton {
                        id: checkButton

                        enabled: !proxyResult.running
                        text: qsTr("Check")
                        onClicked: proxyResult.check()
                    }
                }
            }

            SettingRow {
                title: qsTr("History")
                detail: qsTr("Forget what was said in the open conversation, in this window only")

                PushButton {
                    id: forgetButton

                    text: qsTr("Forget…")
                    onClicked: page.forgetRequested()
                }
            }
        }
    }

    QtObject {
        id: proxyResult

        property bool running: false
        property string text: qsTr("Whether a server answers, and how fast")

        function check() {
            running = true
            text = qsTr("Asking %1…").arg(hostField.text)
            ImUtil.tcpingProxy(hostField.text, Number(portField.text), page.client.userName)
        }
    }

    Connections {
        target: ImUtil

        function onPingProxyResult(host, result) {
            // Both windows hear of every check.
            if (!proxyResult.running || host !== hostField.text)
                return
            proxyResult.running = false
            proxyResult.text = result.result ? qsTr("%1 answers after %2 ms").arg(host).arg(result.ttl)
                                             : qsTr("%1 does not answer").arg(host)
        }
    }
}
