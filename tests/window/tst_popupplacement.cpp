// Where a pop-up goes: tables of numbers worked out by hand, on screens that need not exist.

#include "window/popupplacement.h"

#include <QtTest>

using popupplacement::Anchor;
using popupplacement::Place;

namespace {

const QRect area(0, 0, 1000, 800);

} // namespace

class TestPopupPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerHasThePopUpAtIt_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QPoint>("place");
        const QSize size(200, 100);
        QTest::newRow("room") << QPoint(30, 40) << size << area << QPoint(30, 40);
        QTest::newRow("just fits") << QPoint(800, 700) << size << area << QPoint(800, 700);
        QTest::newRow("too low: above the pointer") << QPoint(30, 701) << size << area << QPoint(30, 601);
        QTest::newRow("too far right") << QPoint(801, 40) << size << area << QPoint(800, 40);
        QTest::newRow("right of the screen") << QPoint(1500, 40) << size << area << QPoint(800, 40);
        QTest::newRow("left of the screen") << QPoint(-50, 40) << size << area << QPoint(0, 40);
        // Only x is held to the work area where the pop-up fits below.
        QTest::newRow("above the screen") << QPoint(30, -50) << size << area << QPoint(30, -50);
        QTest::newRow("higher than the screen")
            << QPoint(30, 400) << QSize(200, 900) << area << QPoint(30, 0);
        QTest::newRow("wider than the screen")
            << QPoint(30, 40) << QSize(1200, 100) << area << QPoint(-200, 40);
        const QRect above(200, -800, 1000, 760);
        QTest::newRow("screen above: room") << QPoint(300, -500) << size << above << QPoint(300, -500);
        QTest::newRow("screen above: flipped") << QPoint(300, -100) << size << above << QPoint(300, -200);
        QTest::newRow("screen above: left edge") << QPoint(150, -500) << size << above << QPoint(200, -500);
    }
    void pointerHasThePopUpAtIt()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QSize, size);
        QFETCH(QRect, available);
        QFETCH(QPoint, place);
        const Place found = popupplacement::atPointer(pointer, size, available);
        QCOMPARE(QPoint(found.x, found.y), place);
        QVERIFY(found.verticalFirst);
    }

    void itemHasThePopUpBesideIt_data()
    {
        QTest::addColumn<QString>("edge");
        QTest::addColumn<QPoint>("position");
        QTest::addColumn<QSizeF>("item");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QPoint>("place");
        const auto row = [](const char *name, const char *edge, QPoint position, QSizeF item, QSize size,
                            const QRect &available, QPoint place) {
            QTest::newRow(name) << QString::fromLatin1(edge) << position << item << size << available
                                << place;
        };
        const QSizeF item(80, 30);
        const QSize size(200, 100);
        const QSize wide(1200, 100);
        const QSize high(200, 900);
        const QRect above(0, -800, 1000, 760);  // a second screen above the first, 40 pixels of panel
        const QRect beside(-1000, 0, 900, 800); // one to the left

        row("bottom", "bottom", {300, 200}, item, size, area, {300, 230});
        row("bottom just fits", "bottom", {300, 670}, item, size, area, {300, 700});
        row("bottom too low: flush above", "bottom", {300, 671}, item, size, area, {300, 571});
        row("bottom, fraction of the item", "bottom", {300, 200}, {80, 30.9}, size, area, {300, 230});
        row("bottom, a fraction too low", "bottom", {300, 670}, {80, 30.5}, size, area, {300, 570});
        row("bottom never above the work area", "bottom", {300, 650}, item, high, area, {300, 0});
        row("bottom at the left", "bottom", {-30, 200}, item, size, area, {0, 230});
        row("bottom at the right", "bottom", {801, 200}, item, size, area, {800, 230});
        row("bottom, wider than the screen", "bottom", {300, 200}, item, wide, area, {-200, 230});

        row("top", "top", {300, 200}, item, size, area, {300, 100});
        row("top just fits", "top", {300, 100}, item, size, area, {300, 0});
        row("top too high: below", "top", {300, 99}, item, size, area, {300, 129});
        row("top below, held to the work area", "top", {300, 90}, {80, 700}, size, area, {300, 700});
        row("top, fraction of the item", "top", {300, 50}, {80, 30.9}, size, area, {300, 80});
        // The test is against 0, so that a screen above the first one never has room.
        row("top on a screen above", "top", {300, -300}, item, size, above, {300, -270});
        row("top on a screen above, low", "top", {300, -60}, item, size, above, {300, -140});
        row("top at the right", "top", {950, 200}, item, size, area, {800, 100});

        row("left", "left", {300, 200}, item, size, area, {100, 200});
        row("left just fits", "left", {200, 200}, item, size, area, {0, 200});
        row("left without room: right of the item", "left", {199, 200}, item, size, area, {279, 200});
        row("left flips to the work area's end", "left", {150, 200}, {700, 30}, size, area, {800, 200});
        row("left, fraction of the item", "left", {100, 200}, {80.9, 30}, size, area, {180, 200});
        row("left on a screen to the left", "left", {-500, 200}, item, size, beside, {-1420, 200});
        row("left at the bottom", "left", {300, 750}, item, size, area, {100, 700});
        row("left above the screen", "left", {300, -20}, item, size, area, {100, 0});
        row("left, higher than the screen", "left", {300, 200}, item, high, area, {100, -100});

        row("right", "right", {300, 200}, item, size, area, {380, 200});
        row("right just fits", "right", {720, 200}, item, size, area, {800, 200});
        row("right without room: left of the item", "right", {721, 200}, item, size, area, {521, 200});
        row("right never left of the work area", "right", {900, 200}, item, {950, 100}, area, {0, 200});
        row("right, fraction of the item", "right", {300, 200}, {80.7, 30}, size, area, {380, 200});
        row("right at the bottom", "right", {300, 701}, item, size, area, {380, 700});

        row("bottomLeft: right edges meet", "bottomLeft", {300, 200}, item, size, area, {180, 246});
        row("bottomLeft reaches below by the gap", "bottomLeft", {300, 670}, item, size, area, {180, 716});
        row("bottomLeft too low: above", "bottomLeft", {300, 671}, item, size, area, {180, 571});
        row("bottomLeft at the right", "bottomLeft", {801, 200}, item, size, area, {800, 246});
        row("bottomLeft left of the screen", "bottomLeft", {-30, 200}, item, size, area, {-120, 246});
        row("bottomLeft, fractions", "bottomLeft", {300, 200}, {80.6, 30.6}, size, area, {180, 246});
    }
    void itemHasThePopUpBesideIt()
    {
        QFETCH(QString, edge);
        QFETCH(QPoint, position);
        QFETCH(QSizeF, item);
        QFETCH(QSize, size);
        QFETCH(QRect, available);
        QFETCH(QPoint, place);
        const Anchor anchor{position, item.width(), item.height()};
        const auto found = popupplacement::atAnchor(edge, anchor, size, available);
        QVERIFY(found);
        QCOMPARE(QPoint(found->x, found->y), place);
        QCOMPARE(found->verticalFirst, edge != QLatin1String("left") && edge != QLatin1String("right"));
    }

    void anyOtherEdgePlacesNothing()
    {
        for (const char *edge : {"", "Bottom", "bottomRight", "topLeft", "center", " left"})
            QVERIFY2(!popupplacement::atAnchor(QString::fromLatin1(edge), {}, {10, 10}, area), edge);
    }
};

QTEST_APPLESS_MAIN(TestPopupPlacement)
#include "tst_popupplacement.moc"
