#pragma once

#include "emojiglobal.h"

#include <QScopedPointer>
#include <QString>

QT_BEGIN_NAMESPACE
class QPixmap;
QT_END_NAMESPACE

/// Hands out the pictures of emoji, on any thread. A picture is decoded when it is first asked for and stays.
class EMOJI_EXPORT EmojiManager
{
    Q_DISABLE_COPY(EmojiManager)

public:
    /// Where the picture of an emoji is: a rectangle in device pixels on `pixmap`.
    struct EmojiInfo
    {
        QPixmap *pixmap = nullptr; ///< belongs to the manager, is shared by all threads: never paint into it
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };

    /// The manager of the pictures that were installed with the library. It is never destroyed, so its
    /// pictures can be used until the process ends.
    static EmojiManager *instance();

    /// A manager of the pictures in the file `pictures`, as the build's extraction tool writes it. Its
    /// pictures live as long as it does.
    explicit EmojiManager(const QString &pictures);
    ~EmojiManager();

    /// Fills `info` for the emoji with this key. False, and `info` empty, when the key is unknown or there is
    /// no picture: that is so for all emoji when the picture file is missing or damaged (one warning says
    /// it), and as long as there is no `QGuiApplication`.
    bool emoji(const QString &key, EmojiInfo &info);

private:
    class Pictures;
    const QScopedPointer<Pictures> pictures;
};
