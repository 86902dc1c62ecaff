#include "boxinwindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QtTest>

void BoxInWindow::initTestCase()
{
    window = std::make_unique<ItemWindow>();
    QVERIFY(window->open());
}

void BoxInWindow::cleanupTestCase()
{
    window.reset();
}

void BoxInWindow::init()
{
    guard = std::make_unique<MessageGuard>();
    box = std::make_unique<Box>(window->contentItem());
    box->setPosition(QPointF(20, 20));
    box->setAiteEnabled(true);
    box->forceActiveFocus();
    box->setNames(engine);
    QGuiApplication::clipboard()->setText(QStringLiteral("untouched"));
}

void BoxInWindow::cleanup()
{
    box.reset();
    QCOMPARE(guard->unexpected(), QStringList());
    guard.reset();
}

void BoxInWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window.get(), key, modifiers);
}

void BoxInWindow::type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(window.get(), c.toLatin1());
}
