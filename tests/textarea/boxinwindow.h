#pragma once

#include "box.h"
#include "itemwindow.h"
#include "messageguard.h"

#include <QJSEngine>
#include <QObject>

#include <memory>

/// What tests of a box in a window begin and end each function with: a new box that offers mentions and has
/// the focus, "untouched" on the clipboard, and no message at the end that nobody expected.
class BoxInWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

protected:
    /// Presses a key, as the window system would.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses the key of each character of `text`, all of them in ASCII.
    void type(const QString &text);

    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<Box> box;
    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
};
