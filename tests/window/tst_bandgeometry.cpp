// The rubber band of a resize: what it shows of a window, and how it follows the pointer.

#include "window/bandgeometry.h"

#include <QtTest>

namespace {

const QRect start(100, 200, 400, 300); // right() is 499, bottom() is 499
const QPoint press(110, 210);
const QSize minimum(150, 120);

} // namespace

class TestBandGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shadowIsLeftOutUnlessTheWorkAreaIsFilled_data()
    {
        QTest::addColumn<QRect>("window");
        QTest::addColumn<QRect>("visible");
        const QRect usual(100, 200, 400, 300);
        QTest::newRow("usual") << usual << QRect(120, 220, 360, 260);
        QTest::newRow("as wide as the work area") << QRect(0, 10, 1600, 300) << QRect(0, 30, 1600, 260);
        QTest::newRow("as high") << QRect(10, 0, 300, 960) << QRect(30, 0, 260, 960);
        QTest::newRow("one less") << QRect(0, 0, 1599, 959) << QRect(20, 20, 1559, 919);
        QTest::newRow("filling") << QRect(0, 0, 1600, 960) << QRect(0, 0, 1600, 960);
        QTest::newRow("larger") << QRect(-20, -20, 1640, 1000) << QRect(-20, -20, 1640, 1000);
    }
    void shadowIsLeftOutUnlessTheWorkAreaIsFilled()
    {
        QFETCH(QRect, window);
        QFETCH(QRect, visible);
        QCOMPARE(bandgeometry::withoutShadow(window, 20, {1600, 960}), visible);
    }

    void shadowComesBackByTheBandsOwnSize()
    {
        const QSize available(1600, 960);
        QCOMPARE(bandgeometry::withShadow({120, 220, 360, 260}, 20, available), QRect(100, 200, 400, 300));
        // Judged by the band, not by the window that it came from: a band drawn to the work area's width has
        // none.
        QCOMPARE(bandgeometry::withShadow({0, 220, 1600, 260}, 20, available), QRect(0, 200, 1600, 300));
        QCOMPARE(bandgeometry::withShadow({1, 1, 1599, 960}, 20, available), QRect(-19, 1, 1639, 960));
        QCOMPARE(bandgeometry::withShadow({5, 6, 7, 8}, 0, available), QRect(5, 6, 7, 8));
    }

    void edgesFollowThePointer_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QPoint>("now");
        // The four edges of the expected band: left, top, right, bottom, inclusive.
        QTest::addColumn<QVector<int>>("edges");
        const auto row = [](const char *name, int kind, QPoint now, QVector<int> edges) {
            QTest::newRow(name) << kind << now << edges;
        };
        const QPoint outwards(90, 190);  // 20 left and above the press
        const QPoint inwards(130, 250);  // 20 right, 40 below
        const QPoint beyond(2000, 3000); // far beyond the opposite edges
        row("left out", 10, outwards, {80, 200, 499, 499});
        row("left in", 10, inwards, {120, 200, 499, 499});
        row("left stops at the minimum", 10, beyond, {100 + (499 - 150) - 110, 200, 499, 499});
        row("right out", 11, inwards, {100, 200, 519, 499});
        row("right in", 11, outwards, {100, 200, 479, 499});
        row("right does not stop", 11, {-2000, 0}, {100, 200, 499 - 2110, 499});
        row("top out", 12, outwards, {100, 180, 499, 499});
        row("top stops at the minimum", 12, beyond, {100, 200 + (499 - 120) - 210, 499, 499});
        row("bottom out", 15, inwards, {100, 200, 499, 539});
        row("bottom does not stop", 15, {0, -2000}, {100, 200, 499, 499 - 2210});
        row("top left out", 13, outwards, {80, 180, 499, 499});
        row("top left stops both ways", 13, beyond, {339, 369, 499, 499});
        row("top right stops above only", 14, beyond, {100, 369, 499 + 1890, 499});
        row("top right in", 14, {90, 250}, {100, 240, 479, 499});
        row("bottom left stops at the left only", 16, beyond, {339, 200, 499, 499 + 2790});
        row("bottom right stops nowhere", 17, {-2000, -3000}, {100, 200, 499 - 2110, 499 - 3210});
        row("bottom right out", 17, inwards, {100, 200, 519, 539});
        row("client area gives the start", 1, inwards, {100, 200, 499, 499});
        row("title bar gives the start", 2, inwards, {100, 200, 499, 499});
        row("unknown kind gives the start", 18, inwards, {100, 200, 499, 499});
    }
    void edgesFollowThePointer()
    {
        QFETCH(int, kind);
        QFETCH(QPoint, now);
        QFETCH(QVector<int>, edges);
        const QRect moved = bandgeometry::moved(start, kind, press, now, minimum);
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        moved.getCoords(&left, &top, &right, &bottom);
        QCOMPARE(QVector<int>({left, top, right, bottom}), edges);
    }
};

QTEST_APPLESS_MAIN(TestBandGeometry)
#include "tst_bandgeometry.moc"
