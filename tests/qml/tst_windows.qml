// Windows and the desktop as scripts meet them.

import QtQuick 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

TestCase {
    id: test
    name: "Windows"
    when: windowShown
    visible: true
    width: 200
    height: 100

    FramelessWindow {
        id: window
        x: 120
        y: 90
        width: 400
        height: 300
        titleArea: title
        extraTitleArea: [null, extra, undefined, "text"]
        excludeTitleArea: [button]
        // Types of the module in a handler's parameters are known to the engine.
        onKeyPressed: window.ignoreEvent(event)

        Item {
            id: title
            width: 400
            height: 60

            Item {
                id: button
                x: 300
                width: 60
                height: 60
            }
        }
        Item {
            id: extra
            y: 100
            width: 20
            height: 20
        }
    }

    PopupWindow {
        id: popup
        width: 100
        height: 50
        attachItem: title
        edge: "right"
    }

    QxtGlobalShortcut {
        id: hotKey
        enabled: false
    }

    SystemTrayIcon {
        id: tray
        toolTip: "tray"
        messageCount: 3
        state: SystemTrayIcon.Offline
    }

    ScrollController {
        id: controller
        width: 100
        height: 100
        orientation: Qt.Horizontal
    }

    SignalSpy {
        id: wheel
        target: controller
        signalName: "wheel"
    }

    function test_aWindowHoldsItsSceneAndItsAreas() {
        compare(window.flags, 0xC001)
        compare(window.windowState, Qt.WindowNoState)
        compare(window.titleArea, title)
        compare(window.excludeTitleArea[0], button)
        compare(window.extraTitleArea.length, 4)
        window.borderWidth = 0
        compare(window.borderWidth, 1)
        window.windowScreen = window.windowScreen
        verify(window.availableScreenGeometry().width > 0)
        window.setCursor(Qt.IBeamCursor)
        window.setGrabMouseState(false)
        window.updateNativeWindowFlag()
        window.parentWindow = null
        verify(Qt.colorEqual(window.background, "transparent"))
    }

    function test_aPopUpOpensAndFades() {
        popup.delay = 10
        popup.timeout = 10
        popup.open()
        verify(!popup.visible)
        tryCompare(popup, "visible", true, 10000)
        compare(popup.maskArea, Qt.rect(0, 0, 100, 50))
        popup.fade()
        tryCompare(popup, "visible", false, 10000)
        popup.maskArea = Qt.rect(1, 2, 3, 4)
        compare(popup.maskArea, Qt.rect(1, 2, 3, 4))
    }

    function test_aHotKeyIsWrittenAsText() {
        ignoreWarning(/QxtGlobalShortcut failed to register: /)
        compare(hotKey.setShortcut(""), false)
        compare(hotKey.shortcutString(), "")
        compare(hotKey.setShortcut("Ctrl+Alt+F8"), true)
        compare(hotKey.shortcutString(), "Ctrl+Alt+F8")
        compare(hotKey.shortcutString(Qt.ControlModifier | Qt.Key_F5), "Ctrl+F5")
        verify(!hotKey.enabled)
        hotKey.setEnabled()
        verify(hotKey.enabled)
    }

    function test_theTrayCountsMessages() {
        compare(tray.toolTip, "tray")
        compare(tray.messageCount, 3)
        compare(tray.state, SystemTrayIcon.Offline)
        compare(tray.visible, false)
        tray.flash()
        verify(tray.flashing)
    }

    function test_theWheelIsTold() {
        controller.parent = test
        wheel.clear()
        mouseWheel(controller, 50, 50, 0, -120)
        compare(wheel.count, 1)
        compare(wheel.signalArguments[0][0], -45)
        compare(wheel.signalArguments[0][1], 0)
        controller.parent = null
    }

    function test_aCaptureDeletesItself() {
        const capture = Qt.createQmlObject("import com.ostrel.im.component 1.0; ScreenCapture {}", test)
        if (Qt.platform.os !== "windows")
            compare(capture.desktopWindowList, [])
        capture.windowRegion(-5, -5)
        compare(capture.region, Qt.rect(0, 0, 0, 0))
        verify(Number(capture.screenId) > 0)
        capture.show()
        capture.hide()
        wait(50)
    }

    function test_startingWithTheSessionIsOff() {
        compare(AutoStart.enable, false)
    }
}
