import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A piece of code. Unlike other messages it is an editor, so that it keeps its columns; the search marks its hits.
BubbleFrame {
    id: bubble

    property string text
    property string highlight
    property real widest: 400
    readonly property Item textItem: null
    readonly property alias editor: editor

    width: Math.min(widest, Math.max(180, editor.implicitWidth + 28))
    height: editor.implicitHeight + 44
    color: "#202a40"

    TextEdit {
        id: editor

        x: 14
        y: 12
        width: bubble.width - 28
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.WrapAnywhere
        textFormat: TextEdit.PlainText
        color: "#d5def2"
        selectionColor: Theme.accentDark
        font { family: Theme.codeFamily; pixelSize: 13 }
        text: bubble.text
    }

    SyntaxHighlighter {
        id: highlighter

        foregroundColor: "#202a40"
        backgroundColor: "#ffe08a"
        keyword: bubble.highlight
        onKeywordChanged: rehighlight()
        Component.onCompleted: {
            setDocument(editor.textDocument)
            rehighlight()
        }
    }

    BubbleFooter {
        bubble: bubble
        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 11; bottomMargin: 6 }
    }
}
