// The connection to the service. It connects when it is told where to.
import QtQuick 2.15
import com.ostrel.im.component 1.0

WebSocket {
    id: socket

    property string token

    signal messageArrived(var message)

    function connectTo(address) {
        url = address
        header = { "Authorization": "Bearer " + token }
        open()
    }

    function sendMessage(text, mentions) {
        return isConnected && send(JSON.stringify({ text: text, mentions: mentions })) > 0
    }

    onTextMessageReceived: socket.messageArrived(JSON.parse(message))
    onIsConnectedChanged: console.info(isConnected ? "Connected" : "Not connected")
}
