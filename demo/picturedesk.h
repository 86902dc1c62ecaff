#pragma once

#include <QObject>

class QWindow;

/// What the client needs of pictures that scripts cannot do: photographs of the screen, and thumbnails that
/// travel inside a message.
class PictureDesk : public QObject
{
    Q_OBJECT

public:
    /// Photographs go into `folder`.
    explicit PictureDesk(const QString &folder, QObject *parent = nullptr);

    /// The path of a picture of the screen that `window` is on; "" when the system shows none.
    [[nodiscard]] Q_INVOKABLE QString photographScreen(QWindow *window) const;
    /// A JPEG of at most 40 by 40 pixels in base64; "" when the file holds no picture.
    [[nodiscard]] Q_INVOKABLE QString thumbnail(const QString &path) const;

private:
    QString folder;
};
