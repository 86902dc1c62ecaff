// The property surface of DrawableText, apart from any layout.

#include "text/drawabletext.h"

#include <QSignalSpy>
#include <QtTest>

class TestProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAMaximalWidthNothingIsLaidOut()
    {
        DrawableText item;
        item.setText(QStringLiteral("one\ntwo"));
        item.setLinkColor(Qt::red);
        QCOMPARE(item.lineCount(), 0);
        QCOMPARE(item.width(), 0.0);
        QCOMPARE(item.height(), 0.0);
    }

    void negativeMaximalWidthIsStoredAsZero()
    {
        DrawableText item;
        item.setMaxWidth(-5);
        QCOMPARE(item.maxWidth(), 0.0);
    }

    void pointerShapeNotifiesEvenWhenUnchanged()
    {
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::textCursorShapeChanged);
        QCOMPARE(int(item.textCursorShape()), 0);
        item.setTextCursorShape(Qt::IBeamCursor);
        item.setTextCursorShape(Qt::IBeamCursor);
        QCOMPARE(changes.count(), 2);
    }
};

QTEST_MAIN(TestProperties)
#include "tst_properties.moc"
