// The toolbox as scripts call it: values go in and come out as JavaScript knows them.

import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

TestCase {
    name: "ImUtil"

    Window {
        id: window
        visible: true
    }

    SignalSpy {
        id: pings
        target: ImUtil
        signalName: "pingProxyResult"
    }

    function test_pathsAreText() {
        compare(ImUtil.toLocalFile("file:///C:/a%20b.png"), "C:/a b.png")
        compare(ImUtil.toLocalFile("C:\\a%20b.png"), "C:/a%20b.png")
        compare(ImUtil.toLocalFile("file://server/share/x"), "//server/share/x")
        compare(ImUtil.fromLocalFile("C:\\a b.png"), "file:///C:/a%20b.png")
        compare(ImUtil.fromLocalFile("//server/share"), "file://server/share")
    }

    function test_filesAreFoundByUrl() {
        const self = Qt.resolvedUrl("tst_imutil.qml")
        verify(ImUtil.fileExists(self))
        verify(!ImUtil.fileExists(self + ".missing"))
        verify(ImUtil.getFileSize(self.toString()) > 1000)
        verify(ImUtil.isDir(Qt.resolvedUrl(".")))
        verify(ImUtil.readTextFile(ImUtil.toLocalFile(self.toString())).startsWith("// The toolbox"))
        verify(!ImUtil.deleteFile(self + ".missing"))
        verify(!ImUtil.existApp("sh"))
    }

    function test_infoIsAnObject() {
        const info = ImUtil.getFileInfo(Qt.resolvedUrl("tst_imutil.qml"), true)
        compare(info.fileName, "tst_imutil.qml")
        compare(info.suffix, "qml")
        compare(info.isDir, false)
        compare(info.isFile, true)
        verify(info.lastModified instanceof Date)
        compare(info.fileMd5, ImUtil.sha1UpgradeFile(info.filePath))
        compare(info.fileMd5.length, 40)
        compare(ImUtil.getFileInfo(info.filePath).fileMd5, undefined)
        compare(Object.keys(ImUtil.getFileInfo("/missing")).length, 0)
    }

    function test_droppedUrlsAreAList() {
        const found = ImUtil.containsFileType([Qt.resolvedUrl("."), Qt.resolvedUrl("tst_imutil.qml")])
        compare(found.containsFolder, true)
        compare(found.containsFile, true)
        compare(found.containsMedia, false)
    }

    function test_picturesHaveSizes() {
        compare(ImUtil.imageSize("/missing"), Qt.size(-1, -1))
        verify(!ImUtil.isImageFormat(Qt.resolvedUrl("tst_imutil.qml")))
        compare(ImUtil.getImageInfo("/missing").size, 0)
        compare(Object.keys(ImUtil.scaleImage("/missing", "/missing")).length, 0)
        compare(ImUtil.reduceImage("", "/missing", 1, 1), false)
        compare(ImUtil.imageSaveAsTmpWebp("a.webp"), "")
        compare(ImUtil.copyPhoto("", "", Qt.rect(0, 0, 1, 1), Qt.size(1, 1)), false)
    }

    function test_sizesAndTimesAreText() {
        compare(ImUtil.intToSizeStr(1048575), "1023.99 KB")
        compare(ImUtil.intToSizeStr(undefined), "nan GB")
        compare(ImUtil.intsToSizeStrs(1048576, 524288), ["1 MB", "0.5"])
        compare(ImUtil.fromTime(3661000), "01:01:01")
        compare(ImUtil.fromTime(61500, true), "01:01.500")
        compare(ImUtil.fromTime(3661005, true), "01:01:01.05")
        compare(ImUtil.secondsToString(0), "-:-")
        compare(ImUtil.secondsToString(65), "01:05")
        compare(ImUtil.secondsToString(65, "m:s"), "1:5")
        compare(ImUtil.toFormatedTimeType(0), "")
        compare(ImUtil.toFormatedDateTime(Date.now()), "Today")
        verify(ImUtil.isToday(Date.now()))
        verify(!ImUtil.isToday(0))
        compare(ImUtil.toFormatTime(new Date(2024, 1, 29, 13).getTime(), "yyyy-MM-dd HH"), "2024-02-29 13")
    }

    function test_coloursAreColours() {
        verify(Qt.colorEqual(ImUtil.colorById(0), "#ED4E4E"))
        verify(Qt.colorEqual(ImUtil.colorById(15), "#ED4E4E"))
        verify(Qt.colorEqual(ImUtil.colorByStr(""), "black"))
        verify(Qt.colorEqual(ImUtil.colorByStr("a"), ImUtil.colorByStr("a", 0.35)))
        verify(!Qt.colorEqual(ImUtil.colorByStr("a"), ImUtil.colorByStr("a", 0.8)))
        compare(ImUtil.colorToHSL("blue"), {"h": 240, "s": 255, "l": 128})
        fuzzyCompare(ImUtil.setColorAlpha("red", 0.5).a, 0.5, 0.01)
        compare(ImUtil.bubleGradientColors(100, 0, 100, "#010203", "white"), ["#ffffff", "#010203"])
    }

    function test_textsAndIdentifiers() {
        compare(ImUtil.trimString(" a\nb "), "ab")
        compare(ImUtil.createTmpId().length, 16)
        compare(ImUtil.createTmpId(40).length, 32)
        compare(ImUtil.compare("a", "b"), -1)
        const names = ["b", "c", "a"].sort(ImUtil.compare)
        compare(names, ["a", "b", "c"])
        compare(ImUtil.fromBase64(ImUtil.toBase64("text")).toString(), "text")
    }

    function test_screensAndPoints() {
        verify(ImUtil.isContainsPoint(Qt.rect(0, 0, 10, 10), Qt.point(9, 9)))
        verify(!ImUtil.isContainsPoint(Qt.rect(0, 0, 10, 10), Qt.point(10, 9)))
        compare(ImUtil.variantToSize(Qt.size(3, 4)), Qt.size(3, 4))
        verify(ImUtil.desktopGeometry().width > 0)
        const area = ImUtil.screenRect(window)
        verify(area.width > 0 && area.height > 0)
        compare(Object.keys(ImUtil.screenRect(null)).length, 0)
        verify(ImUtil.mousePostion().x !== undefined)
        verify(ImUtil.systemVersion().major !== undefined)
        ImUtil.taskbarFlash(window)
        ImUtil.taskbarFlash(null)
        ImUtil.lockThread()
        ImUtil.unlockThread()
    }

    function test_aProxyIsChecked() {
        pings.clear()
        ImUtil.tcpingProxy("", 80, "user")
        // Port 1 of loopback refuses at once.
        ImUtil.tcpingProxy("127.0.0.1", 1, "user")
        pings.wait(30000)
        compare(pings.count, 1)
        compare(pings.signalArguments[0][0], "127.0.0.1")
        compare(pings.signalArguments[0][1].result, false)
        compare(pings.signalArguments[0][1].ttl, undefined)
    }
}
