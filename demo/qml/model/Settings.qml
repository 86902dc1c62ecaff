import QtQml 2.15
import "store.js" as Store

// What the user has set, kept with the history.
QtObject {
    id: settings

    property bool macButtons: false
    property bool minimizeOnClose: false
    property bool autoStart: false
    property string hotKey: "Ctrl+Alt+J"
    property string wallpaper // path of a picture, "" for none
    property string accent // name of a colour, "" for the client's own
    property var database: null

    function load(from) {
        const kept = Store.settings(from)
        for (const name in kept)
            settings[name] = kept[name]
        database = from
    }

    function keep(name) {
        if (database)
            Store.keepSetting(database, name, settings[name])
    }

    onMacButtonsChanged: keep("macButtons")
    onMinimizeOnCloseChanged: keep("minimizeOnClose")
    onAutoStartChanged: keep("autoStart")
    onHotKeyChanged: keep("hotKey")
    onWallpaperChanged: keep("wallpaper")
    onAccentChanged: keep("accent")
}
