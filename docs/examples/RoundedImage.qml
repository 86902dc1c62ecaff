// An avatar. Equal avatars are decoded once, because they share the cache.
import QtQuick 2.15
import com.ostrel.im.component 1.0

RoundedImage {
    width: 48
    height: 48
    radius: 24
    cache: true
    fillMode: RoundedImage.PreserveAspectCrop
    source: ":/qml/image/transparent.png"
}
