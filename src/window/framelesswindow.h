#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickView>
#include <QScopedPointer>
#include <QScreen>
#include <QVariant>
#include <QVector>

class ClientFrame;
class QRubberBand;

Q_DECLARE_METATYPE(QEvent *)

/// A top-level window without a visible frame that is a full window to the system: maximising, minimising and
/// snapping stay the system's. Items of the scene tell what is the title bar; moving is native, resizing is
/// done by a rubber band inside the shadow margin.
class FramelessWindow : public QQuickView
{
    Q_OBJECT
    /// Normal, minimised, maximised or full screen, as `Qt.WindowNoState` and its like.
    Q_PROPERTY(Qt::WindowState windowState READ windowState NOTIFY stateChanged)
    /// The item that moves the window when it is dragged. A destroyed item counts as none.
    Q_PROPERTY(QQuickItem *titleArea READ titleArea WRITE setTitleArea NOTIFY titleAreaChanged)
    /// Kept for clients that set it.
    Q_PROPERTY(QRect dragArea READ dragArea WRITE setDragArea NOTIFY dragAreaChanged)
    /// Further items that move the window; invisible ones don't.
    Q_PROPERTY(
        QVariantList extraTitleArea READ extraTitleArea WRITE setExtraTitleArea NOTIFY extraTitleAreaChanged)
    /// Items on top of title areas that take their own clicks; invisible ones don't.
    Q_PROPERTY(QVariantList excludeTitleArea READ excludeTitleArea WRITE setExcludeTitleArea NOTIFY
                   excludeTitleAreaChanged)
    /// Whether the edges resize the window.
    Q_PROPERTY(bool enableResize READ enableResize WRITE setEnableResize NOTIFY enableResizeChanged)
    /// Minimise instead of closing.
    Q_PROPERTY(
        bool minimizedOnHide READ minimizedOnHide WRITE setMinimizedOnHide NOTIFY minimizedOnHideChanged)
    /// Width of the resize band in native pixels, at least 1; a width of 1 has no band. Default: 4.
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    /// Width of the transparent margin of the scene around the visible window, device-independent.
    /// Default: 20.
    Q_PROPERTY(int shadowWidth READ shadowWidth WRITE setShadowWidth NOTIFY shadowWidthChanged)
    /// The parent window; setting it always notifies.
    Q_PROPERTY(QWindow *parentWindow READ parentWindow WRITE setParent NOTIFY parentWindowChanged)
    /// Kept for clients that set it.
    Q_PROPERTY(bool enableWindowShadow READ enableWindowShadow WRITE setEnableWindowShadow NOTIFY
                   enableWindowShadowChanged)
    /// Whether window buttons of the scene show the one that minimises; the window itself does not read it.
    Q_PROPERTY(bool displayMinimizeButton READ displayMinimizeButton WRITE setDisplayMinimizeButton NOTIFY
                   displayMinimizeButtonChanged)
    /// The same for the button that maximises.
    Q_PROPERTY(bool displayMaximizeButton READ displayMaximizeButton WRITE setDisplayMaximizeButton NOTIFY
                   displayMaximizeButtonChanged)
    /// The same for the button that closes.
    Q_PROPERTY(bool displayCloseButton READ displayCloseButton WRITE setDisplayCloseButton NOTIFY
                   displayCloseButtonChanged)
    /// Centre the window in its screen's work area once it has been created.
    Q_PROPERTY(bool delayCenterWindow READ delayCenterWindow WRITE setDelayCenterWindow NOTIFY
                   delayCenterWindowChanged)
    /// False makes the whole window client area: no title bar, no resize band.
    Q_PROPERTY(bool enabledNCArea READ enabledNCArea WRITE setEnabledNCArea NOTIFY enabledNCAreaChanged)
    /// Kept for clients that set it.
    Q_PROPERTY(QRect areoAreaes READ areoAreaes WRITE setAreoAreaes NOTIFY areoAreaesChanged)
    /// The screen that the window is on. Writing it moves the window there.
    Q_PROPERTY(QScreen *windowScreen READ windowScreen WRITE setWindowScreen NOTIFY windowScreenChanged)
    /// Kept for clients that set it; the window itself stays transparent.
    Q_PROPERTY(QColor background READ background WRITE setBackground NOTIFY backgroundChanged)

public:
    explicit FramelessWindow(QWindow *parent = nullptr);
    ~FramelessWindow() override;

    [[nodiscard]] QQuickItem *titleArea() const;
    [[nodiscard]] QRect dragArea() const;
    [[nodiscard]] QVariantList extraTitleArea() const;
    [[nodiscard]] QVariantList excludeTitleArea() const;
    [[nodiscard]] bool enableResize() const;
    [[nodiscard]] bool minimizedOnHide() const;
    [[nodiscard]] int borderWidth() const;
    [[nodiscard]] int shadowWidth() const;
    [[nodiscard]] QWindow *parentWindow() const;
    [[nodiscard]] bool enableWindowShadow() const;
    [[nodiscard]] bool displayMinimizeButton() const;
    [[nodiscard]] bool displayMaximizeButton() const;
    [[nodiscard]] bool displayCloseButton() const;
    [[nodiscard]] bool delayCenterWindow() const;
    [[nodiscard]] bool enabledNCArea() const;
    [[nodiscard]] QRect areoAreaes() const;
    [[nodiscard]] QColor background() const;

    /// What lies under a point of the desktop, in native pixels: the answer to the system. Remembers the kind
    /// of hit for the mouse events that follow; an edge is remembered as such and answered as client area, so
    /// that the system's own resize never starts.
    int hitTest(QPoint nativePoint);
    /// The last hit's kind, a code of `framehittest::HitKind`.
    [[nodiscard]] int hitKind() const { return lastHit; }

public Q_SLOTS:
    /// Deletes the window once control is back in the event loop.
    void deleteLater();
    /// Gives the native window the style that `enableResize` asks for. Creates the native window.
    void updateNativeWindowFlag();
    /// Shows the pointer in this shape over the window.
    void setCursor(Qt::CursorShape shape);
    /// The work area of the window's screen.
    QRect availableScreenGeometry();
    /// The screen that the window is on.
    QScreen *windowScreen();
    /// Moves the window to the middle of its screen's work area.
    void centerWindow();
    /// Lets `mouseMoved()` report the pointer's moves until the next release. Takes no native capture.
    void setGrabMouseState(bool state);
    /// For handlers of `keyPressed()`: lets the scene have the key.
    void acceptEvent(QEvent *event);
    /// For handlers of `keyPressed()`: keeps the key from the scene.
    void ignoreEvent(QEvent *event);

    void setTitleArea(QQuickItem *titleArea);
    void setDragArea(const QRect &dragArea);
    void setExtraTitleArea(const QVariantList &extraTitleArea);
    void setExcludeTitleArea(const QVariantList &excludeTitleArea);
    void setEnableResize(bool enableResize);
    void setMinimizedOnHide(bool minimizedOnHide);
    void setBorderWidth(int borderWidth);
    void setShadowWidth(int shadowWidth);
    /// Makes the window a child of another; null makes it a top-level window again. Always notifies.
    void setParent(QWindow *parentWindow);
    void setEnableWindowShadow(bool enableWindowShadow);
    void setDisplayMinimizeButton(bool displayMinimizeButton);
    void setDisplayMaximizeButton(bool displayMaximizeButton);
    void setDisplayCloseButton(bool displayCloseButton);
    void setDelayCenterWindow(bool delayCenterWindow);
    void setEnabledNCArea(bool enabledNCArea);
    void setAreoAreaes(const QRect &areoAreaes);
    void setWindowScreen(QScreen *windowScreen);
    void setBackground(const QColor &background);

Q_SIGNALS:
    void enableResizeChanged(bool enableResize);
    void minimizedOnHideChanged(bool minimizedOnHide);
    void borderWidthChanged(int borderWidth);
    /// `windowState` is another.
    void stateChanged(Qt::WindowState state);
    void titleAreaChanged(QObject *titleArea);
    void shadowWidthChanged(int shadowWidth);
    void parentWindowChanged(QWindow *parentWindow);
    void excludeTitleAreaChanged(QVariantList excludeTitleArea);
    void enableWindowShadowChanged(bool enableWindowShadow);
    void extraTitleAreaChanged(QVariantList extraTitleArea);
    void displayMinimizeButtonChanged(bool displayMinimizeButton);
    void displayMaximizeButtonChanged(bool displayMaximizeButton);
    void displayCloseButtonChanged(bool displayCloseButton);
    void delayCenterWindowChanged(bool delayCenterWindow);
    void enabledNCAreaChanged(bool enabledNCArea);
    void dragAreaChanged(QRect dragArea);
    void areoAreaesChanged(QRect areoAreaes);
    /// Kept for clients that connect to it; never emitted.
    void wheelBegin();
    /// Kept for clients that connect to it; never emitted.
    void wheelEnd(bool trueEnded = true);
    /// Kept for clients that connect to it; never emitted.
    void wheel(int pixelDeltaX, int pixelDeltaY, int angleDeltaX, int angleDeltaY);
    /// While grabbed: the pointer is at `point` on the desktop, `offset` below where it was.
    void mouseMoved(QPoint point, int offset);
    /// The grab ended at `point` on the desktop.
    void mouseReleased(QPoint point);
    /// A button was pressed on the window, title bar included.
    void mousePressed();
    /// A key was pressed; `ignoreEvent(event)` keeps it from the scene. `event` is valid during the signal
    /// only.
    void keyPressed(int key, int modifiers, QString text, QEvent *event);
    void windowScreenChanged(QScreen *windowScreen);
    void backgroundChanged(QColor background);
    /// Kept for clients that connect to it; never emitted.
    void nativeMousePressed();
    /// The pointer came in.
    void enter();
    /// The pointer left.
    void leave();

protected:
    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override;

private:
    /// Items as a script gave them. The variants hold bare pointers, so each item has a guard of its own.
    class ItemList
    {
    public:
        void set(const QVariantList &list);
        /// The list, with null for items that are gone.
        [[nodiscard]] QVariantList livingValues() const;
        [[nodiscard]] QVector<QRect> visibleSceneRects() const;

    private:
        struct Entry
        {
            QVariant value;
            QPointer<QQuickItem> item;
            bool heldItem = false;
        };
        QVector<Entry> entries;
    };

    void updateResizeCursor();
    void moveBand(QPoint globalPosition);
    void showBand(QPoint globalPosition);
    void applyBand();

    QScopedPointer<ClientFrame> clientFrame;
    QScopedPointer<QRubberBand> band;
    QRect bandStart;
    QPoint pressPosition;
    int lastHit = 1;
    bool grabbed = false;
    int lastGrabY = 0; ///< 0: none yet

    QPointer<QQuickItem> titleItem;
    ItemList extraItems;
    ItemList excludedItems;
    QRect dragRect;
    QRect areoRect;
    QColor backgroundColor = Qt::transparent;
    int border = 4;
    int shadow = 20;
    bool resizable = true;
    bool minimizes = false;
    bool hasShadow = true;
    bool minimizeButton = true;
    bool maximizeButton = true;
    bool closeButton = true;
    bool centersLater = false;
    bool hasNCArea = true;
};
