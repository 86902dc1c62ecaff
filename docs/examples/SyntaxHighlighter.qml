// Marks the searched word in a text editor while it is typed.
import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0

Column {
    width: 240

    TextField {
        id: search
        width: parent.width
        placeholderText: "Search"
    }

    TextEdit {
        id: editor
        width: parent.width
        text: "Lunch at noon, or tea at four?"
    }

    SyntaxHighlighter {
        keyword: search.text
        foregroundColor: "#1f6feb"
        backgroundColor: "#fff3a3"
        Component.onCompleted: setDocument(editor.textDocument)
    }
}
