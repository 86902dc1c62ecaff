import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import com.ostrel.im.component 1.0
import "qrc:/qml" as Documents
import "components"
import "model"
import "pages"
import "theme"

// The window of one signed-in user. A new page needs a line in `pages` and its item in the stack below.
FramelessWindow {
    id: window

    property alias user: chatClient.user
    property alias serverUrl: chatClient.serverUrl
    property alias fresh: chatClient.fresh
    property alias startWith: chatClient.startWith
    property alias pictureDesk: chatClient.pictureDesk
    property QtObject samples: null
    property bool first: false // the one window with the tray icon, the hot key and the auto-start
    property string page: "chats"
    readonly property alias client: chatClient
    readonly property alias conversation: chatsPage.conversation
    readonly property alias conversations: chatsPage.conversations
    readonly property alias emojiPage: emojiPage
    readonly property alias contactsPage: contactsPage
    readonly property alias galleryPage: galleryPage
    readonly property alias settingsPage: settingsPage
    readonly property alias question: question
    readonly property alias titleBar: titleBar
    readonly property alias nameCard: nameCard
    readonly property alias viewer: viewer
    readonly property alias tray: tray
    readonly property alias hotKey: hotKey
    property ScreenCapture capture: null
    readonly property int margin: windowState === Qt.WindowMaximized ? 0 : shadowWidth
    readonly property var pages: [
        { key: "chats", icon: "chat", title: qsTr("Chats") },
        { key: "contacts", icon: "contacts", title: qsTr("Contacts") },
        { key: "gallery", icon: "gallery", title: qsTr("Pictures") },
        { key: "emoji", icon: "smile", title: qsTr("Emoji") },
        { key: "settings", icon: "settings", title: qsTr("Settings") }
    ]

    width: 1120 + 2 * shadowWidth
    height: 774 + 2 * shadowWidth
    minimumWidth: 820 + 2 * shadowWidth
    minimumHeight: 560 + 2 * shadowWidth
    shadowWidth: 12
    title: chatClient.userName
    titleArea: titleBar
    excludeTitleArea: [titleBar.buttons]
    minimizedOnHide: chatClient.settings.minimizeOnClose
    Component.onCompleted: {
        chatsPage.conversation.composer.takeFocus()
        if (first)
            hotKey.setShortcut(chatClient.settings.hotKey)
    }

    // Brings the window back from wherever it is.
    function present() {
        if (visibility === Window.Minimized || visibility === Window.Hidden)
            showNormal()
        raise()
        requestActivate()
    }

    function openConversation(id) {
        chatClient.open(id)
        page = "chats"
    }

    function forget() {
        const title = chatClient.titleOf(chatClient.current)
        if (question.ask(qsTr("Forget all that was said in “%1”?").arg(title)))
            chatClient.forget()
    }

    function takeScreenshot() {
        const picture = chatClient.pictureDesk.photographScreen(window)
        if (picture === "") {
            conversation.toast.show(qsTr("The screen cannot be photographed"))
            return
        }
        capture = screenshotTool.createObject(null, { picture: picture })
        capture.showFullScreen()
        capture.requestActivate()
        capture.surface.forceActiveFocus()
    }

    ChatClient {
        id: chatClient

        onReceived: {
            if (!window.active && window.first)
                tray.flash()
        }
    }

    Connections {
        target: chatClient.settings
        enabled: window.first

        function onHotKeyChanged() {
            hotKey.setShortcut(chatClient.settings.hotKey)
        }
    }

    Binding {
        target: AutoStart
        property: "enable"
        value: chatClient.settings.autoStart
        when: window.first
    }

    Wallpaper {
        id: wallpaper

        path: chatClient.settings.wallpaper
    }

    SystemTrayIcon {
        id: tray

        visible: window.first
        toolTip: chatClient.userName
        state: chatClient.connected ? SystemTrayIcon.Online : SystemTrayIcon.Offline
        messageCount: chatClient.unreadTotal
        onTrigger: window.present()
        onMessageClick: window.present()
        onDoubleClick: Qt.quit()
    }

    QxtGlobalShortcut {
        id: hotKey

        onActivated: window.present()
    }

    Component {
        id: screenshotTool

        ScreenshotTool {
            onTaken: {
                window.page = "chats"
                window.conversation.composer.attach([path])
                window.present()
            }
        }
    }

    Shortcut {
        sequence: StandardKey.Find
        onActivated: {
            window.page = "chats"
            window.conversation.openSearch("")
        }
    }

    Shortcut {
        sequence: StandardKey.Open
        onActivated: {
            window.page = "chats"
            window.conversations.takeFocus()
        }
    }

    // The shadow that the system would draw around a window with a frame.
    Repeater {
        model: window.margin

        Rectangle {
            required property int index

            anchors { fill: parent; margins: index; topMargin: Math.min(window.margin, index + 3) }
            radius: 14 - index / 2
            color: "#0b1a3a"
            opacity: 0.004 + 0.0012 * index
        }
    }

    Rectangle {
        id: frame

        anchors { fill: parent; margins: window.margin }
        color: Theme.window

        TitleBar {
            id: titleBar

            width: parent.width
            window: window
            title: chatClient.userName
            macButtons: chatClient.settings.macButtons
        }

        NavigationRail {
            id: rail

            anchors { top: titleBar.bottom; bottom: parent.bottom }
            pages: window.pages
            current: window.page
            userName: chatClient.userName
            user: chatClient.user
            online: chatClient.connected
            onChosen: window.page = key
        }

        Item {
            anchors { left: rail.right; right: parent.right; top: titleBar.bottom; bottom: parent.bottom }
            clip: true

            ChatsPage {
                id: chatsPage

                anchors.fill: parent
                visible: window.page === "chats"
                client: chatClient
                wallpaper: chatClient.settings.wallpaper
                onScreenshotRequested: window.takeScreenshot()
                onPictureClicked: viewer.show(path)
                onPersonHovered: nameCard.showFor(person, near)
                onPersonLeft: nameCard.fade()
            }

            ContactsPage {
                id: contactsPage

                anchors.fill: parent
                visible: window.page === "contacts"
                client: chatClient
                onConversationChosen: window.openConversation(id)
            }

            GalleryPage {
                id: galleryPage

                anchors.fill: parent
                visible: window.page === "gallery"
                samples: window.samples
                pictureDesk: window.pictureDesk
                onPictureClicked: viewer.show(path)
            }

            EmojiPage {
                id: emojiPage

                anchors.fill: parent
                visible: window.page === "emoji"
                onPicked: {
                    window.conversation.composer.insert(emoji)
                    window.page = "chats"
                    window.conversation.composer.takeFocus()
                }
            }

            SettingsPage {
                id: settingsPage

                anchors.fill: parent
                visible: window.page === "settings"
                client: chatClient
                hotKey: window.first ? hotKey : null
                wallpaperPath: window.samples ? window.samples.landscape(0) : ""
                // Asked once the click has been dealt with: while it waits, the window would take no other.
                onForgetRequested: Qt.callLater(window.forget)
            }
        }

        Rectangle {
            anchors.fill: parent
            color: "transparent"
            border { width: 1; color: "#200b1a3a" }
        }

        PictureViewer {
            id: viewer

            anchors.fill: parent
        }

        Item {
            anchors.fill: parent

            Question {
                id: question
            }
        }
    }

    NameCard {
        id: nameCard

        online: chatClient.isOnline(person)
    }

    // The module's tool tip keeps its place for clients that name it.
    Documents.ToolTip {}
}
