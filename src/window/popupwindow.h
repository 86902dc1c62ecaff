#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

/// A borderless, transparent window without focus that opens next to an item or to the pointer after a delay,
/// closes after a time-out, and stays open while the pointer rests on it.
///
/// It is placed inside the work area of the application's current screen, the dynamic property
/// "currentScreen" of the application object. A `FramelessWindow` writes that when it changes its screen, and
/// only then: on a desktop with one screen nobody does. Without it, and after that screen was unplugged, the
/// window opens where it stands. So an application sets it once at its start:
///
///     qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen()));
class PopupWindow : public QQuickWindow
{
    Q_OBJECT
    /// Milliseconds before the window opens. Default: 0, the next turn of the event loop.
    Q_PROPERTY(int delay READ delay WRITE setDelay NOTIFY delayChanged)
    /// Milliseconds before the window closes. Default: 0x7fffffff, about 24.8 days.
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout NOTIFY timeoutChanged)
    /// The item to open against; null opens at the pointer. A destroyed item counts as null.
    Q_PROPERTY(QQuickItem *attachItem READ attachItem WRITE setAttachItem NOTIFY attachItemChanged)
    /// Side of `attachItem`: "bottom", "top", "left", "right" or "bottomLeft"; any other places nothing.
    Q_PROPERTY(QString edge READ edge WRITE setEdge NOTIFY edgeChanged)
    /// Delete the window when it closes.
    Q_PROPERTY(bool deleteOnClose READ deleteOnClose WRITE setDeleteOnClose NOTIFY deleteOnCloseChanged)
    /// Pointer position relative to the window when it was last placed; never negative.
    Q_PROPERTY(QPoint cursorPos READ cursorPos WRITE setCursorPos NOTIFY cursorPosChanged)
    /// False leaves the window where it is.
    Q_PROPERTY(bool autoMove READ autoMove WRITE setAutoMove NOTIFY autoMoveChanged)
    /// The parent window; setting it always notifies.
    Q_PROPERTY(QWindow *parentWindow READ parentWindow WRITE setParent NOTIFY parentWindowChanged)
    /// False lets the first delay pass without showing; it then becomes true without a signal.
    Q_PROPERTY(bool initAndShow READ initAndShow WRITE setInitAndShow NOTIFY initAndShowChanged)
    /// First rectangle of the window's mask, or the whole window without one. Setting it always notifies;
    /// opening the window drops it.
    Q_PROPERTY(QRect maskArea READ maskArea WRITE setMaskArea NOTIFY maskAreaChanged)

public:
    explicit PopupWindow(QWindow *parent = nullptr);

    [[nodiscard]] int delay() const;
    [[nodiscard]] int timeout() const;
    [[nodiscard]] QQuickItem *attachItem() const;
    [[nodiscard]] QString edge() const;
    [[nodiscard]] bool deleteOnClose() const;
    [[nodiscard]] QPoint cursorPos() const;
    [[nodiscard]] bool autoMove() const;
    [[nodiscard]] QWindow *parentWindow() const;
    [[nodiscard]] bool initAndShow() const;
    [[nodiscard]] QRect maskArea() const;

public Q_SLOTS:
    /// Opens after `delay`, and stays.
    void open();
    /// Closes after `timeout`.
    void fade();
    /// Places the window and shows it.
    void show();
    /// Deletes the window once control is back in the event loop.
    void deleteLater();

    void setDelay(int delay);
    void setTimeout(int timeout);
    void setAttachItem(QQuickItem *attachItem);
    void setEdge(const QString &edge);
    void setDeleteOnClose(bool deleteOnClose);
    void setCursorPos(QPoint cursorPos);
    void setAutoMove(bool autoMove);
    /// Makes the window a child of another; null makes it a top-level window again. Always notifies.
    void setParent(QWindow *parentWindow);
    void setInitAndShow(bool initAndShow);
    void setMaskArea(const QRect &maskArea);

Q_SIGNALS:
    /// The window got the keyboard.
    void focusIn();
    /// The window lost the keyboard.
    void focusOut();
    /// The pointer came in; the window stays open.
    void enter();
    /// The pointer left; the window closes after `timeout`.
    void leave();
    void delayChanged(int delay);
    void timeoutChanged(int timeout);
    void attachItemChanged(QQuickItem *attachItem);
    void edgeChanged(QString edge);
    void deleteOnCloseChanged(bool deleteOnClose);
    void cursorPosChanged(QPoint cursorPos);
    void autoMoveChanged(bool autoMove);
    void parentWindowChanged(QWindow *parentWindow);
    void initAndShowChanged(bool initAndShow);
    void maskAreaChanged(QRect maskArea);

protected:
    bool event(QEvent *event) override;

private:
    void openTimerExpired();
    void place(QScreen *screen);

    QTimer *openTimer = nullptr;
    QTimer *closeTimer = nullptr;
    int openDelay = 0;
    int closeTimeout = 0x7fffffff;
    QPointer<QQuickItem> anchorItem;
    QString anchorEdge = QStringLiteral("bottom");
    QPoint pointerPosition;
    bool deletedOnClose = false;
    bool movedOnShow = true;
    bool shownByTimer = true;
};
