#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QTemporaryDir>

class QQuickItem;
class QQuickWindow;

/// Hands and eyes of the guided tour: it sends real pointer and key events to the demo's windows, looks at
/// the clipboard and takes pictures. Points are in the coordinates of the item they come with.
class Robot : public QObject
{
    Q_OBJECT

public:
    /// Pictures go into `folder`; an empty one means that none are taken.
    explicit Robot(const QString &folder, QObject *parent = nullptr);

    Q_INVOKABLE void hover(QQuickItem *item, qreal x, qreal y);
    Q_INVOKABLE void click(QQuickItem *item, qreal x, qreal y, int button = Qt::LeftButton);
    Q_INVOKABLE void drag(QQuickItem *item, qreal fromX, qreal fromY, qreal toX, qreal toY);
    Q_INVOKABLE void wheel(QQuickItem *item, qreal x, qreal y, int angleDelta);
    Q_INVOKABLE void key(QQuickWindow *window, int key, int modifiers = Qt::NoModifier);
    Q_INVOKABLE void type(QQuickWindow *window, const QString &text);
    /// Drags `files`, local paths, over the item and lets go there.
    Q_INVOKABLE void drop(QQuickItem *item, qreal x, qreal y, const QStringList &files);
    [[nodiscard]] Q_INVOKABLE QString clipboardText() const;
    /// Puts a picture on the clipboard, as a drawing program does.
    Q_INVOKABLE void copyPicture() const;
    /// Writes a text file that goes with the tour. Its path, or "" when that failed.
    [[nodiscard]] Q_INVOKABLE QString makeFile(const QString &name, const QString &text) const;
    /// How many programs start when this user logs on.
    [[nodiscard]] Q_INVOKABLE int countStartEntries() const;
    /// Saves what `window` shows, with the cards that lie over it, as `name`.png. False when it could not be
    /// grabbed or written.
    [[nodiscard]] Q_INVOKABLE bool takePicture(QQuickWindow *window, const QString &name) const;
    /// The same of the whole desktop.
    [[nodiscard]] Q_INVOKABLE bool takeScreen(const QString &name) const;

private:
    void mouse(QEvent::Type type, QQuickWindow *window, QPointF position, Qt::MouseButton button,
               Qt::MouseButtons buttons);
    [[nodiscard]] bool save(const QImage &picture, const QString &name) const;

    QString folder;
    QTemporaryDir files;
    ulong time = 1000; ///< of the last event, in milliseconds; gestures are told apart by it
};
