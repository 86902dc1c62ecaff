import QtQml 2.15
import QtQuick 2.15
import com.ostrel.im.component 1.0
import ".."
import "../theme"

// Walks through the client as a person would, with real pointer and key events, checks what happens and takes a
// picture of each page. A page is an entry of `steps`:
//   name     what a failure is reported under
//   at       the window that gets the keys and is taken a picture of; Alice's when left out
//   act      done once, as soon as that window is the active one
//   until    asked again and again until it is true; a step that waits too long ends the tour
//   picture  the name of the picture to take then, if any
//   whole    the picture is one of the whole desktop
QtObject {
    id: tour

    enum Phase { Activating, Waiting, Settling }

    property ChatWindow alice
    property ChatWindow bob
    property QtObject robot
    property QtObject desktop
    property QtObject census

    // All that the module offers.
    readonly property var offered: [
        "FramelessWindow", "PopupWindow", "ScreenCapture", "WebSocket", "EventLoop", "SystemTrayIcon", "SyntaxHighlighter",
        "QxtGlobalShortcut", "RoundedImage", "ImageRender", "ImagePreviewer", "DrawableImage", "RoundedRectItem",
        "CircleProgress", "DrawableText", "DrawableTextArea", "ImageColorTheme", "ScrollController", "Clipboard", "ImUtil",
        "EventLoopCreator", "AutoStart", "qrc:/qml/TreeView.qml", "qrc:/qml/MacWindowButtons.qml",
        "qrc:/qml/ButtonClickEffect.qml", "qrc:/qml/WindowButtons.qml", "qrc:/qml/ToolTip.qml", "qrc:/qml/ScrollArea.qml"
    ]

    readonly property int patience: 30000
    readonly property int pause: 220 // longer than rows take to move
    readonly property int settling: 450 // longer than any animation of the client
    property int position: 0
    readonly property var step: steps[position]
    readonly property var window: step.at ? step.at() : alice
    property int phase: Tour.Activating
    property double startedAt: 0
    property double settledAt: 0
    property Item textItem: null
    property string expected
    property int layouts: 0
    property int resizes: 0

    readonly property var steps: [
        { name: "both are signed in",
          until: () => alice.client.onlineUsers.length === 2 && bob.client.onlineUsers.length === 2
                       && isLaidOut(alice, 0) && isLaidOut(bob, 0),
          picture: "conversation" },
        { name: "the other window shows the direct conversation",
          until: () => bob.client.messages.count === 10, picture: "direct", at: () => bob },

        { name: "Alice opens her conversation with Bob", act: () => openRow(alice, "1-2"),
          until: () => alice.client.currentId === "1-2" && isLaidOut(alice, 0) },
        { name: "a message travels",
          act: () => write(alice, "Hi @Bob, look at https://example.org/news?id=7 (#aurora) 🎉"),
          until: () => {
              const arrived = bob.client.messages.get(0)
              return arrived.body === "Hi @Bob, look at https://example.org/news?id=7 (#aurora) 🎉"
                     && arrived.author === 1 && JSON.parse(arrived.blocks).map(block => block.type).join() === "3,1,6"
                     && alice.client.messages.get(0).delivery === "sent" && isLaidOut(bob, 0)
          } },
        { name: "Shift+Return breaks the line", at: () => bob,
          act: () => {
              robot.click(bob.conversation.composer.input, 40, 15)
              robot.type(bob, "First line")
              robot.key(bob, Qt.Key_Return, Qt.ShiftModifier)
              robot.type(bob, "第二行 👍🏽")
              robot.key(bob, Qt.Key_Return)
          },
          until: () => alice.client.messages.get(0).body === "First line\n第二行 👍🏽" && textAt(alice, 0).lineCount === 2
                       && alice.tray.flashing,
          picture: "answer" },
        { name: "a message for a closed conversation counts as unread", at: () => bob,
          act: () => { openRow(bob, "aurora"); write(bob, "Good night all 🌙") },
          until: () => rowOf(alice, "aurora").unread === 1 && rowOf(alice, "aurora").preview === "Bob: Good night all 🌙"
                       && alice.tray.messageCount === alice.client.unreadTotal && alice.tray.messageCount > 0 },
        { name: "the tray's icon flashes", until: () => desktop.trayBlinks > 2 },
        { name: "and then shows the count", until: () => !alice.tray.flashing && desktop.redInTray() > 60,
          picture: "tray", whole: true },
        { name: "a minimised window", at: () => bob, act: () => alice.showMinimized(),
          until: () => alice.windowState === Qt.WindowMinimized },
        { name: "comes back by a click on the tray", at: () => bob, act: () => desktop.click(desktop.trayPoint()),
          until: () => alice.active && alice.windowState === Qt.WindowNoState },

        { name: "Alice opens the group again", act: () => openRow(alice, "aurora"),
          until: () => alice.client.currentId === "aurora" && isLaidOut(alice, 0) },
        { name: "jumping far up", act: () => jumpTo(alice, "A longer one, so that"),
          until: () => isTextFound("A longer one, so that") },
        { name: "a drag selects", act: () => robot.drag(textItem, 30, 10, textItem.width - 60, textItem.height - 12),
          until: () => textItem.selectedText.length > 60 && textItem.text.indexOf(textItem.selectedText) > 0,
          picture: "selection" },
        { name: "Ctrl+C copies", act: () => robot.key(alice, Qt.Key_C, Qt.ControlModifier),
          until: () => robot.clipboardText() === textItem.selectedText },
        { name: "a right click opens the menu", act: () => robot.click(textItem, 60, 12, Qt.RightButton),
          until: () => alice.conversation.menu.opened, picture: "menu" },
        { name: "the menu copies the message",
          act: () => { const entry = alice.conversation.menu.itemAt(1); robot.click(entry, entry.width / 2, entry.height / 2) },
          until: () => robot.clipboardText() === textItem.plainText() && !alice.conversation.menu.visible },
        { name: "one selection at a time", act: () => jumpTo(alice, "Questions to design@"),
          until: () => isTextFound("Questions to design@") },

        { name: "a link tells where it leads", act: () => jumpTo(alice, "I put the notes here"),
          until: () => isTextFound("I put the notes here") },
        { name: "hovering shows the card", act: () => hoverUntil("https://docs.example.org/aurora/spacing#bubbles"),
          until: () => alice.conversation.hoverCard.opacity === 1, picture: "hover" },
        { name: "leaving the link hides the card", act: () => robot.hover(textItem, 12, 10),
          until: () => !alice.conversation.hoverCard.visible },
        { name: "a click opens the link",
          act: () => { const at = hoverUntil("https://docs.example.org/aurora/spacing#bubbles"); robot.click(textItem, at.x, at.y) },
          until: () => alice.conversation.toast.text === "Opening https://docs.example.org/aurora/spacing#bubbles"
                       && alice.conversation.toast.opacity === 1, picture: "link" },
        { name: "a mention", act: () => { robot.hover(textItem, 12, 10); jumpTo(alice, "@Bob @Jonas are") },
          until: () => isTextFound("@Bob @Jonas are") && !alice.conversation.hoverCard.visible
                       && !alice.conversation.toast.visible },
        { name: "a mention shows the person", act: () => robot.click(textItem, 14, 11),
          until: () => alice.conversation.personCard.opened && alice.conversation.personCard.person === 2, picture: "person" },
        { name: "Escape closes the card", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.conversation.personCard.visible },
        { name: "a tag", act: () => jumpTo(alice, "#aurora is green"), until: () => isTextFound("#aurora is green") },
        { name: "a tag starts a search",
          act: () => { const at = hoverUntil("#aurora"); robot.click(textItem, at.x, at.y) },
          until: () => alice.conversation.searchBar.visible && alice.conversation.matches.length > 1 },

        { name: "Ctrl+F opens the search",
          act: () => { robot.key(alice, Qt.Key_Escape); alice.conversation.composer.takeFocus();
                       robot.key(alice, Qt.Key_F, Qt.ControlModifier); robot.type(alice, "line emoji") },
          until: () => alice.conversation.list.highlight === "line emoji" && alice.conversation.matches.length > 1,
          picture: "search" },
        { name: "Return goes to the next match", act: () => robot.key(alice, Qt.Key_Return),
          until: () => alice.conversation.searchBar.position === 1 },
        { name: "Escape ends the search", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.conversation.searchBar.visible && alice.conversation.list.highlight === "" },
        { name: "the wheel scrolls",
          act: () => { alice.conversation.list.showNewest(); scroll(alice, 40) },
          until: () => scrolledFrom - alice.conversation.list.contentY > 3000 && alice.conversation.newestButton.visible },
        { name: "a message does not disturb the reading of old ones", at: () => bob,
          act: () => { scrolledFrom = alice.conversation.list.contentY; write(bob, "One more thing…") },
          until: () => alice.conversation.newestButton.missed === 1
                       && alice.client.messages.get(0).body === "One more thing…"
                       && !alice.conversation.list.atNewest },
        { name: "a button leads to the newest message", act: () => robot.click(alice.conversation.newestButton, 20, 20),
          until: () => alice.conversation.list.atNewest && alice.conversation.newestButton.missed === 0
                       && isLaidOut(alice, 0) },
        { name: "a message below is shown at once", at: () => bob, act: () => write(bob, "Now I am done."),
          until: () => alice.client.messages.get(0).body === "Now I am done." && alice.conversation.list.atYEnd
                       && isLaidOut(alice, 0) && alice.conversation.newestButton.missed === 0 },

        { name: "previews are cut", act: () => { openRow(alice, "release"); alice.width = 900 },
          until: () => alice.client.currentId === "release" && isLaidOut(alice, 0)
                       && previewOf(alice, "lunch").elidedText.endsWith("…"), picture: "previews" },
        { name: "a wide window again", act: () => alice.width = 1144, until: () => alice.conversation.width > 700 },
        { name: "Chinese", act: () => openRow(alice, "mei"), until: () => isLaidOut(alice, 0), picture: "chinese" },
        { name: "Arabic", act: () => openRow(alice, "omar"), until: () => isLaidOut(alice, 0), picture: "arabic" },
        { name: "emoji in messages", act: () => openRow(alice, "emoji"), until: () => isLaidOut(alice, 0),
          picture: "emoji-messages" },
        { name: "the emoji page", act: () => alice.page = "emoji",
          until: () => alice.emojiPage.visible, picture: "emoji" },
        { name: "an emoji goes into the composer", act: () => robot.click(alice.emojiPage, 18 + 27, 64 + 50),
          until: () => alice.page === "chats" && alice.conversation.composer.input.content === "😀" },

        { name: "the picker", act: () => robot.click(alice.conversation.composer.emojiButton, 18, 18),
          until: () => alice.conversation.composer.picker.opened, picture: "picker" },
        { name: "Escape closes the picker", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.conversation.composer.picker.visible },

        { name: "an @ offers the people of the conversation",
          act: () => { alice.conversation.composer.clear(); openRow(alice, "aurora");
                       robot.click(alice.conversation.composer.input, 40, 15); robot.type(alice, "Ask @") },
          until: () => alice.conversation.composer.completion.open
                       && alice.conversation.composer.completion.entries.length === 5, picture: "mentions" },
        { name: "letters narrow the offer and Return takes it",
          act: () => { robot.type(alice, "b"); robot.key(alice, Qt.Key_Return) },
          until: () => alice.conversation.composer.input.untrimmedContent === "Ask @Bob "
                       && alice.conversation.composer.input.aiteList()[0].userId === 2 },
        { name: "a key takes a whole mention away",
          act: () => { robot.key(alice, Qt.Key_Backspace); robot.key(alice, Qt.Key_Backspace) },
          until: () => alice.conversation.composer.input.untrimmedContent === "Ask " },
        { name: "the arrow keys choose from the offer",
          act: () => { robot.type(alice, "@"); robot.key(alice, Qt.Key_Down); robot.key(alice, Qt.Key_Return) },
          until: () => alice.conversation.composer.input.content === "Ask @李梅" },
        { name: "a # offers tags", act: () => robot.type(alice, "about #a"),
          until: () => alice.conversation.composer.completion.open
                       && alice.conversation.composer.completion.entries[0].value === "#aurora", picture: "tags" },
        { name: "Tab takes a tag", act: () => robot.key(alice, Qt.Key_Tab),
          until: () => alice.conversation.composer.input.content === "Ask @李梅 about #aurora"
                       && !alice.conversation.composer.completion.open },
        { name: "Ctrl+E opens the emoji",
          // Without the row of recent ones, which would shift what the next keys lead to.
          act: () => { alice.conversation.composer.recentEmoji = []; robot.key(alice, Qt.Key_E, Qt.ControlModifier) },
          until: () => alice.conversation.composer.picker.opened },
        { name: "keys pick an emoji",
          act: () => [Qt.Key_Right, Qt.Key_Right, Qt.Key_Down, Qt.Key_Up, Qt.Key_Return].forEach(key => robot.key(alice, key)),
          until: () => alice.conversation.composer.input.content === "Ask @李梅 about #aurora 😄"
                       && !alice.conversation.composer.picker.visible && alice.conversation.composer.input.activeFocus },
        { name: "a copied picture and dropped files become attachments",
          act: () => {
              robot.copyPicture()
              robot.key(alice, Qt.Key_V, Qt.ControlModifier)
              robot.drop(alice.conversation.composer.input, 40, 15, [robot.makeFile("spacing notes.txt", "8 above, 3 below.\n".repeat(90))])
          },
          until: () => alice.conversation.composer.attachments.count === 2
                       && alice.conversation.composer.attachments.get(0).isPicture
                       && alice.conversation.composer.attachments.get(1).bytes === 1620, picture: "attachments" },
        { name: "a draft stays behind", act: () => openRow(alice, "1-2"),
          until: () => alice.conversation.composer.empty },
        { name: "and comes back", act: () => openRow(alice, "aurora"),
          until: () => alice.conversation.composer.input.content === "Ask @李梅 about #aurora 😄"
                       && alice.conversation.composer.input.aiteList()[0].userId === 3
                       && alice.conversation.composer.attachments.count === 2 },
        { name: "text, picture and file are sent",
          act: () => { bob.client.open("aurora"); alice.conversation.composer.takeFocus(); robot.key(alice, Qt.Key_Return) },
          until: () => ["text", "picture", "file"].every((kind, i) => alice.client.messages.get(2 - i).kind === kind
                                                                      && bob.client.messages.get(2 - i).kind === kind)
                       && alice.client.messages.get(0).delivery === "sent"
                       && JSON.parse(bob.client.messages.get(2).blocks).map(block => block.data).join() === "3,#aurora"
                       && alice.conversation.composer.empty && alice.conversation.composer.recentEmoji[0] === "😄",
          picture: "sent" },
        { name: "the menu of what was sent",
          act: () => { textItem = textAt(alice, 2); robot.click(textItem, 60, 12, Qt.RightButton) },
          until: () => alice.conversation.menu.opened },
        { name: "a message is copied as HTML",
          act: () => { const entry = alice.conversation.menu.itemAt(2); robot.click(entry, entry.width / 2, entry.height / 2) },
          until: () => Clipboard.text("html").indexOf("@李梅 about #aurora") > 0 && !alice.conversation.menu.visible },
        { name: "the menu of what was sent, again", act: () => robot.click(textItem, 60, 12, Qt.RightButton),
          until: () => alice.conversation.menu.opened },
        { name: "a message is copied",
          act: () => { const entry = alice.conversation.menu.itemAt(1); robot.click(entry, entry.width / 2, entry.height / 2) },
          until: () => robot.clipboardText() === "Ask @李梅 about #aurora 😄" && !alice.conversation.menu.visible },
        { name: "a mention survives copy and paste",
          act: () => {
              robot.click(alice.conversation.composer.input, 40, 15)
              robot.key(alice, Qt.Key_V, Qt.ControlModifier)
          },
          until: () => alice.conversation.composer.input.content === "Ask @李梅 about #aurora 😄"
                       && alice.conversation.composer.input.aiteList()[0].userId === 3 },
        { name: "the menu of a picture",
          act: () => { alice.conversation.composer.clear(); robot.click(alice.conversation.list.itemAtIndex(1).bubble, 60, 60, Qt.RightButton) },
          until: () => alice.conversation.pictureMenu.opened },
        { name: "a picture is copied",
          act: () => { const entry = alice.conversation.pictureMenu.itemAt(0); robot.click(entry, entry.width / 2, entry.height / 2) },
          until: () => alice.conversation.toast.opacity === 1 && !alice.conversation.pictureMenu.visible },
        { name: "a copied picture can be pasted",
          act: () => { robot.click(alice.conversation.composer.input, 40, 15); robot.key(alice, Qt.Key_V, Qt.ControlModifier) },
          until: () => alice.conversation.composer.attachments.count === 1 },
        { name: "the counter appears near the limit",
          act: () => { alice.conversation.composer.clear(); alice.conversation.composer.input.insertText("a line of words ".repeat(239)) },
          until: () => alice.conversation.composer.counter.visible && alice.conversation.composer.counter.remaining > 0,
          picture: "counter" },
        { name: "code is sent as code",
          act: () => {
              alice.conversation.composer.clear()
              const code = ["```", "// @Bob: the lines of one bubble", "int lineCount(const Layout &layout)", "{",
                            "    return layout.lines().size();", "}", "```"]
              code.forEach((line, i) => {
                  robot.type(alice, line)
                  robot.key(alice, Qt.Key_Return, i < code.length - 1 ? Qt.ShiftModifier : Qt.NoModifier)
              })
          },
          until: () => bob.client.messages.get(0).kind === "code"
                       && bob.client.messages.get(0).body.startsWith("// @Bob") && bob.client.messages.get(0).body.endsWith("}") },
        { name: "a search marks what it finds in code",
          act: () => { robot.key(alice, Qt.Key_F, Qt.ControlModifier); robot.type(alice, "layout") },
          until: () => alice.conversation.matches.indexOf(0) === 0 && alice.conversation.list.highlight === "layout",
          picture: "code" },
        { name: "the search ends", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.conversation.searchBar.visible },
        ...byKeys("Alice", () => alice, () => bob),
        ...byKeys("Bob", () => bob, () => alice),
        { name: "a conversation with faces", act: () => openRow(alice, "release"),
          until: () => alice.client.currentId === "release" && isLaidOut(alice, 0) && faceInView(alice) !== null },
        { name: "an avatar under the pointer shows a card",
          act: () => { face = faceInView(alice); robot.hover(face, 12, 12) },
          until: () => alice.nameCard.visible && alice.nameCard.person > 0 && isCardAt("right"), picture: "name-card" },
        { name: "the card goes when the pointer does", act: () => robot.hover(alice.conversation.composer.input, 40, 15),
          until: () => !alice.nameCard.visible },
        ...showCardAt("left"), ...showCardAt("top"), ...showCardAt("bottom"), ...showCardAt("bottomLeft"),
        { name: "the scissors show the whole screen", act: () => robot.click(alice.conversation.composer.shotButton, 18, 18),
          until: () => alice.capture !== null && alice.capture.visible },
        { name: "a drag draws the piece", at: () => alice.capture,
          act: () => desktop.drag(Qt.point(140, 120), Qt.point(620, 420)),
          until: () => alice.capture.region === Qt.rect(140, 120, 480, 300) && !desktop.busy, picture: "capture" },
        { name: "Return takes the piece", act: () => robot.key(alice.capture, Qt.Key_Return), at: () => alice.capture,
          until: () => alice.conversation.composer.attachments.count === 1
                       && alice.conversation.composer.attachments.get(0).isPicture },

        { name: "the scissors again", act: () => robot.click(alice.conversation.composer.shotButton, 18, 18),
          until: () => alice.capture !== null && alice.capture.active },
        { name: "Escape gives the piece up", at: () => alice.capture, act: () => desktop.pressKeys("Escape"),
          until: () => alice.capture === null && alice.conversation.composer.attachments.count === 1 },

        { name: "the contacts", act: () => { alice.conversation.composer.clear(); alice.page = "contacts" },
          until: () => alice.contactsPage.tree.width > 0 },
        { name: "a branch of the tree opens", act: () => robot.click(alice.contactsPage.tree, 32, 166),
          until: () => alice.contactsPage.tree.contentHeight > 280 },
        { name: "a leaf of the tree shows the person", act: () => robot.click(alice.contactsPage.tree, 140, 204),
          until: () => alice.contactsPage.chosen !== null && alice.contactsPage.chosen.id === 3
                       && alice.contactsPage.shared.length === 4, picture: "contacts" },

        { name: "the settings", act: () => alice.page = "settings",
          until: () => alice.settingsPage.visible && alice.hotKey.shortcutString() === "Ctrl+Alt+J" },
        { name: "another hot key",
          act: () => {
              robot.click(alice.settingsPage.hotKeyField, 20, 15)
              alice.settingsPage.hotKeyField.selectAll()
              robot.type(alice, "Ctrl+Alt+K")
              robot.key(alice, Qt.Key_Return)
          },
          until: () => alice.hotKey.shortcutString() === "Ctrl+Alt+K" },
        { name: "another window in front of a minimised one", at: () => bob, act: () => alice.showMinimized(),
          until: () => alice.windowState === Qt.WindowMinimized && bob.active },
        { name: "the hot key brings it back", at: () => bob, act: () => desktop.pressKeys("ctrl+alt+k"),
          until: () => alice.active && alice.windowState === Qt.WindowNoState },
        { name: "the program starts with the system", act: () => robot.click(alice.settingsPage.autoStartSwitch, 20, 12),
          until: () => AutoStart.enable && robot.countStartEntries() === 1 },
        { name: "and no longer does", act: () => robot.click(alice.settingsPage.autoStartSwitch, 20, 12),
          until: () => !AutoStart.enable && robot.countStartEntries() === 0 },
        { name: "the service answers the proxy check",
          act: () => {
              alice.settingsPage.portField.text = String(alice.serverUrl).split(":")[2]
              robot.click(alice.settingsPage.checkButton, 40, 18)
          },
          until: () => alice.settingsPage.proxyResult.text.startsWith("127.0.0.1 answers after") },
        { name: "round window buttons", act: () => robot.click(alice.settingsPage.macSwitch, 20, 12),
          until: () => alice.client.settings.macButtons && alice.titleBar.buttons.x < 100, picture: "settings" },
        { name: "square ones again", act: () => robot.click(alice.settingsPage.macSwitch, 20, 12),
          until: () => !alice.client.settings.macButtons },
        { name: "forgetting asks first",
          act: () => { alice.client.open("priya"); robot.click(alice.settingsPage.forgetButton, 40, 18) },
          until: () => alice.question.opened, picture: "question" },
        { name: "Escape is no", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.question.visible && alice.question.loop === null && alice.client.messages.count === 2 },
        { name: "forgetting asks again", act: () => robot.click(alice.settingsPage.forgetButton, 40, 18),
          until: () => alice.question.opened },
        { name: "yes forgets", act: () => robot.click(alice.question.yesButton, 40, 18),
          until: () => !alice.question.visible && alice.client.messages.count === 0 },

        { name: "a drag of the edge draws a band",
          act: () => {
              place = Qt.rect(alice.x, alice.y, alice.width, alice.height)
              const x = alice.x + alice.width - alice.margin
              desktop.drag(Qt.point(x, alice.y + 300), Qt.point(x + 160, alice.y + 320), true)
          },
          until: () => !desktop.busy && isAliceMoved(0, 0, 0, 0), picture: "resize", whole: true },
        { name: "letting go resizes", act: () => desktop.letGo(), until: () => isAliceMoved(0, 0, 160, 0) },
        { name: "a corner resizes both ways",
          act: () => {
              const corner = Qt.point(alice.x + alice.width - alice.margin - 1, alice.y + alice.height - alice.margin - 1)
              desktop.drag(corner, Qt.point(corner.x - 160, corner.y + 40))
          },
          until: () => isAliceMoved(0, 0, 0, 40) && !desktop.busy },
        { name: "the title moves the window",
          act: () => {
              const title = desktop.pointOf(alice.titleBar, 300, 17)
              desktop.drag(title, Qt.point(title.x + 60, title.y + 20))
          },
          until: () => alice.x > place.x + 30 && alice.y > place.y && !desktop.busy },
        { name: "a double click on the title maximises",
          act: () => desktop.click(desktop.pointOf(alice.titleBar, 300, 17), 2),
          until: () => alice.windowState === Qt.WindowMaximized && alice.width > 1500 && !desktop.busy,
          picture: "maximised", whole: true },
        { name: "and another brings it back", act: () => desktop.click(desktop.pointOf(alice.titleBar, 300, 17), 2),
          until: () => alice.windowState === Qt.WindowNoState && alice.width < 1200 && !desktop.busy },
        { name: "the window where it was",
          act: () => { alice.x = place.x; alice.y = place.y; alice.width = place.width; alice.height = place.height },
          until: () => isAliceMoved(0, 0, 0, 0) },
        { name: "a button maximises the window", act: () => robot.click(alice.titleBar.buttons, 45, 15),
          until: () => alice.windowState === Qt.WindowMaximized && alice.width > 1500 },
        { name: "and brings it back", act: () => robot.click(alice.titleBar.buttons, 45, 15),
          until: () => alice.windowState === Qt.WindowNoState && alice.width < 1200 },
        { name: "closing minimises, if so set",
          act: () => { alice.client.settings.minimizeOnClose = true; robot.click(alice.titleBar.buttons, 75, 15) },
          until: () => {
              if (alice.windowState !== Qt.WindowMinimized)
                  return false
              alice.client.settings.minimizeOnClose = false
              alice.present()
              return true
          } },

        { name: "a wallpaper gives its colour", act: () => robot.click(alice.settingsPage.wallpaperSwitch, 20, 12),
          until: () => alice.client.settings.wallpaper !== "" && !Qt.colorEqual(Theme.accent, Theme.ownAccent) },
        { name: "messages over the wallpaper", act: () => alice.openConversation("1-2"),
          until: () => isLaidOut(alice, 0), picture: "wallpaper" },
        { name: "the client's own colour again",
          act: () => { alice.page = "settings"; robot.click(alice.settingsPage.wallpaperSwitch, 20, 12) },
          until: () => Qt.colorEqual(Theme.accent, Theme.ownAccent) },
        { name: "the gallery", act: () => alice.page = "gallery",
          until: () => alice.galleryPage.content !== null && [0, 1].every(i => paletteAt(i).length > 2), picture: "gallery" },
        { name: "the rest of the gallery",
          act: () => { const view = alice.galleryPage.content; for (let i = 0; i < 9; ++i) robot.wheel(view, 200, 300, -120) },
          until: () => alice.galleryPage.content.atYEnd, picture: "gallery-end" },
        { name: "a map of 12,000 by 9,000 opens",
          act: () => { alice.galleryPage.content.contentY = 0; robot.click(alice.galleryPage.content.mapButton, 40, 18) },
          until: () => alice.viewer.visible && alice.viewer.loaded && alice.viewer.pictureSize.width === 12000,
          picture: "map" },
        { name: "the wheel zooms at the pointer",
          act: () => { for (let i = 0; i < 9; ++i) robot.wheel(alice.viewer.surface, 700, 300, 120) },
          until: () => alice.viewer.zoom > 5 * alice.viewer.fitting },
        { name: "a drag moves the map",
          act: () => { offset = alice.viewer.offset; robot.drag(alice.viewer.surface, 700, 300, 500, 200) },
          until: () => Math.round(offset.x - alice.viewer.offset.x) === 200
                       && Math.round(offset.y - alice.viewer.offset.y) === 100, picture: "map-zoomed" },
        { name: "Escape closes the viewer", act: () => robot.key(alice, Qt.Key_Escape),
          until: () => !alice.viewer.visible },

        { name: "a message of 100,000 characters",
          act: () => { alice.page = "chats"; openRow(alice, "night") },
          until: () => isLaidOut(alice, 0) },
        { name: "the long message is laid out", act: () => jumpTo(alice, "Chapter 1"),
          until: () => isTextFound("Chapter 1") && textItem.text.length === 100000 && textItem.lineCount > 1000 },
        { name: "scrolling a long message lays nothing out",
          act: () => { layouts = 0; textItem.lineCountChanged.connect(countLayout); scroll(alice, 60) },
          until: () => scrolledFrom - alice.conversation.list.contentY > 5000 && layouts === 0, picture: "long" },
        { name: "a search in a long message lays it out anew without a jump",
          act: () => {
              textItem.heightChanged.connect(countResize)
              robot.key(alice, Qt.Key_F, Qt.ControlModifier)
              robot.type(alice, "harbour")
          },
          until: () => alice.conversation.matches.length === 1 && textItem.highlightText === "harbour" && layouts > 0
                       && resizes === 0 },

        { name: "everything that the module offers has been in use", until: () => census.missing(offered).length === 0 }
    ]

    // What it takes to find a conversation, mention someone, add an emoji and send, without a pointer.
    function byKeys(name, from, to) {
        const composer = () => from().conversation.composer
        const words = "by keys alone"
        return [
            { name: name + ": the arrow keys lead to a conversation", at: from,
              act: () => {
                  composer().recentEmoji = []
                  robot.key(from(), Qt.Key_O, Qt.ControlModifier)
                  robot.type(from(), "release")
                  robot.key(from(), Qt.Key_Down)
              },
              until: () => from().conversations.list.itemAtIndex(from().client.indexOf("release")).activeFocus,
              picture: name === "Alice" ? "keyboard" : "" },
            { name: name + ": Return opens it, to be written in", at: from,
              act: () => robot.key(from(), Qt.Key_Return),
              until: () => from().client.currentId === "release" && composer().input.activeFocus },
            { name: name + ": an @ offers people", at: from,
              act: () => robot.type(from(), "@"),
              until: () => composer().completion.open && composer().completion.entries.length > 1 },
            { name: name + ": the arrow keys choose one, and Ctrl+E opens the emoji", at: from,
              act: () => {
                  expected = "@" + composer().completion.entries[1].title + " " + words
                  robot.key(from(), Qt.Key_Down)
                  robot.key(from(), Qt.Key_Return)
                  robot.type(from(), words)
                  robot.key(from(), Qt.Key_E, Qt.ControlModifier)
              },
              until: () => composer().input.content === expected && composer().picker.opened },
            { name: name + ": the arrow keys choose an emoji", at: from,
              act: () => [Qt.Key_Right, Qt.Key_Return].forEach(key => robot.key(from(), key)),
              until: () => composer().input.content === expected + "😃" && composer().input.activeFocus },
            { name: name + ": Return sends", at: from,
              act: () => robot.key(from(), Qt.Key_Return),
              until: () => {
                  const sent = from().client.messages.get(0)
                  return composer().empty && sent.body === expected + "😃" && sent.delivery === "sent"
                         && JSON.parse(sent.blocks).map(block => block.type).join() === "3"
                         && rowOf(to(), "release").preview === name + ": " + expected + "😃"
              } }
        ]
    }

    property double scrolledFrom: 0
    property Item face: null
    property point offset
    property rect place // of Alice's window

    readonly property Timer clock: Timer {
        interval: 25
        repeat: true
        onTriggered: tour.proceed()
    }

    Component.onCompleted: {
        begin(0)
        clock.start()
    }

    function proceed() {
        const now = Date.now()
        if (phase === Tour.Activating) {
            if (window.active) {
                phase = Tour.Waiting
                if (step.act)
                    step.act()
            }
        } else if (phase === Tour.Waiting && step.until()) {
            phase = Tour.Settling
            settledAt = now + (step.picture ? settling : pause)
        } else if (phase === Tour.Settling && now >= settledAt) {
            if (step.picture && !(step.whole ? robot.takeScreen(step.picture) : robot.takePicture(window, step.picture)))
                fail("taking the picture " + step.picture)
            else if (position + 1 < steps.length)
                begin(position + 1)
            else
                finish(0)
            return
        }
        if (now - startedAt > patience)
            fail(step.name)
    }

    function begin(index) {
        position = index
        startedAt = Date.now()
        phase = Tour.Activating
        window.raise()
        window.requestActivate()
    }

    function fail(name) {
        console.error("tour: never in use: " + census.missing(offered).join(", "))
        console.error("tour: failed at: " + name)
        robot.takePicture(alice, "failed-alice")
        robot.takePicture(bob, "failed-bob")
        finish(1)
    }

    function finish(status) {
        clock.stop()
        Qt.exit(status)
    }

    function countLayout() {
        ++layouts
    }

    function countResize() {
        ++resizes
    }

    function textAt(window, index) {
        const item = window.conversation.list.itemAtIndex(index)
        return item ? item.textItem : null
    }

    function isLaidOut(window, index) {
        const text = textAt(window, index)
        return text !== null && text.lineCount > 0
    }

    function indexOf(window, beginning) {
        const messages = window.client.messages
        for (let i = 0; i < messages.count; ++i) {
            if (messages.get(i).body.startsWith(beginning))
                return i
        }
        return -1
    }

    function jumpTo(window, beginning) {
        window.conversation.list.jumpTo(indexOf(window, beginning))
    }

    function isTextFound(beginning) {
        textItem = textAt(alice, indexOf(alice, beginning))
        return textItem !== null && textItem.lineCount > 0
    }

    // Moves the pointer over the text until the client tells of `link`; the point where it did.
    function hoverUntil(link) {
        const card = alice.conversation.hoverCard
        card.link = ""
        for (let y = 8; y < textItem.height; y += 8) {
            for (let x = 4; x < textItem.width; x += 6) {
                robot.hover(textItem, x, y)
                if (card.link === link)
                    return Qt.point(x, y)
            }
        }
        fail("no place answers to " + link)
        return Qt.point(-1, -1)
    }

    // The first avatar from below that is in view.
    function faceInView(window) {
        const list = window.conversation.list
        for (let i = 0; i < list.count; ++i) {
            const item = list.itemAtIndex(i)
            if (item && item.face.visible && item.mapToItem(list, 0, 0).y > 0)
                return item.face
        }
        return null
    }

    // The steps that show a card on one side of an avatar and let it go again.
    function showCardAt(edge) {
        return [
            { name: "a card at the " + edge,
              act: () => { alice.nameCard.edge = edge; face = faceInView(alice); robot.hover(face, 12, 12) },
              until: () => alice.nameCard.visible && isCardAt(edge), picture: "card-" + edge },
            { name: "the card at the " + edge + " goes",
              act: () => { alice.nameCard.edge = "right"; robot.hover(alice.conversation.composer.input, 40, 15) },
              until: () => !alice.nameCard.visible }
        ]
    }

    // Whether the name card touches the avatar on that side; there is room around it.
    function isCardAt(edge) {
        const at = desktop.pointOf(face, 0, 0)
        const card = alice.nameCard
        switch (edge) {
        case "left": return card.x + card.width === at.x && card.y === at.y
        case "right": return card.x === at.x + face.width && card.y === at.y
        case "top": return card.x === at.x && card.y + card.height === at.y
        case "bottom": return card.x === at.x && card.y === at.y + face.height
        default: return card.x + card.width === at.x + face.width && card.y === at.y + face.height + 16
        }
    }

    // Whether Alice's window differs from `place` by just that.
    function isAliceMoved(x, y, width, height) {
        return alice.x === place.x + x && alice.y === place.y + y && alice.width === place.width + width
               && alice.height === place.height + height
    }

    function paletteAt(index) {
        const item = alice.galleryPage.content.palettes.itemAt(index)
        return item ? item.colors : []
    }

    function rowOf(window, id) {
        return window.client.conversations.get(window.client.indexOf(id))
    }

    function previewOf(window, id) {
        return window.conversations.list.itemAtIndex(window.client.indexOf(id)).previewItem
    }

    function openRow(window, id) {
        const row = window.conversations.list.itemAtIndex(window.client.indexOf(id))
        robot.click(row, row.width / 2, row.height / 2)
    }

    function write(window, text) {
        robot.click(window.conversation.composer.input, 40, 15)
        robot.type(window, text)
        robot.key(window, Qt.Key_Return)
    }

    function scroll(window, notches) {
        const list = window.conversation.list
        scrolledFrom = list.contentY
        for (let i = 0; i < Math.abs(notches); ++i)
            robot.wheel(list, list.width / 2, list.height / 2, notches > 0 ? 120 : -120)
    }
}
