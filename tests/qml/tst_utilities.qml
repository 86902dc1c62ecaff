// The clipboard, nested loops, sockets and the highlighter as scripts use them.

import QtQuick 2.15
import QtTest 1.15
import QtWebSockets 1.1 as Sockets
import com.ostrel.im.component 1.0

TestCase {
    name: "Utilities"

    TextEdit {
        id: editor
        text: "a @b c"
    }

    SyntaxHighlighter {
        id: highlighter
        keyword: "c"
        foregroundColor: "green"
        Component.onCompleted: setDocument(editor.textDocument)
    }

    EventLoop {
        id: ownLoop
    }

    Timer {
        id: timer
        interval: 20
    }

    Sockets.WebSocketServer {
        id: server
        property var received: []
        listen: true
        host: "127.0.0.1"
        onClientConnected: {
            webSocket.textMessageReceived.connect(function(message) {
                server.received.push(message)
                webSocket.sendTextMessage("echo " + message)
            })
        }
    }

    WebSocket {
        id: socket
        property var received: []
        header: ({ "X-Token": "secret" })
        onTextMessageReceived: received.push(message)
    }

    function test_textGoesThroughTheClipboard() {
        Clipboard.setText("a text")
        compare(Clipboard.text(), "a text")
        compare(Clipboard.filterTextPlain(), "")
        compare(Clipboard.filterTextPlain(true), "a text")
        Clipboard.limitedTextSize(3)
        Clipboard.setMimeData({ "text/html": "<b>rich</b>", "text/plain": "plain" })
        compare(Clipboard.mimeData("html"), "plain")
        verify(Clipboard.mimeData("text").includes("rich"))
        compare(Clipboard.filterTextPlain(), "plain")
        compare(Clipboard.filterContent(), [])
        compare(Clipboard.imagePath(), "")
        Clipboard.clear()
        compare(Clipboard.text(), "")
        compare(Clipboard.filterHtml("<p>a</p><br/>b"), "a<br/>b")
    }

    function test_aLoopWaitsForTheTimer() {
        const loop = EventLoopCreator.create()
        verify(loop.deleteOnQuit)
        timer.triggered.connect(loop.quit)
        timer.start()
        compare(loop.start(), false)
        verify(!timer.running)
        timer.triggered.disconnect(loop.quit)
    }

    function test_aLoopSurvivesTheCollectorWhileItRuns() {
        const collect = function() {
            gc()
            gc()
        }
        timer.triggered.connect(collect)
        timer.start()
        const end = Date.now() + 20
        const loop = EventLoopCreator.create(false)
        verify(!loop.deleteOnQuit)
        const quit = function() { loop.quit() }
        timer.triggered.connect(quit)
        compare(loop.start(), false)
        timer.triggered.disconnect(collect)
        timer.triggered.disconnect(quit)
        verify(Date.now() >= end - 5)
    }

    function test_aLoopOfTheDocumentIsKept() {
        compare(ownLoop.deleteOnQuit, false)
        timer.triggered.connect(ownLoop.quit)
        for (let round = 0; round < 2; ++round) {
            timer.start()
            compare(ownLoop.start(), false)
        }
        timer.triggered.disconnect(ownLoop.quit)
    }

    function test_messagesGoOutAndComeBack() {
        compare(socket.isConnected, false)
        socket.url = server.url
        socket.open()
        tryCompare(socket, "isConnected", true, 30000)
        verify(socket.send("one") > 0)
        verify(socket.sendTextMessage("two") > 0)
        tryVerify(function() { return socket.received.length === 2 }, 30000)
        compare(server.received, ["one", "two"])
        compare(socket.received, ["echo one", "echo two"])
        socket.close()
        tryCompare(socket, "isConnected", false, 30000)
    }

    function test_theHighlighterIsAttached() {
        highlighter.rehighlight()
        compare(editor.text, "a @b c")
        compare(highlighter.keyword, "c")
        compare(highlighter.foregroundColor, "green")
        compare(highlighter.backgroundColor, "")
    }
}
