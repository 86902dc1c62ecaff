// What part of a frameless window a point belongs to, and rectangles in native pixels.

#include "window/framehittest.h"
#include "window/nativerect.h"

#include <QtTest>

using namespace framehittest;

Q_DECLARE_METATYPE(framehittest::ResizeBand)

namespace {

/// A window at (100, 200) of size 640 x 480. Its visible border runs through 120, 220 and 720, 660.
ResizeBand usualBand()
{
    ResizeBand band;
    band.window = {100, 200, 740, 680};
    return band;
}

ResizeBand with(void (*change)(ResizeBand &))
{
    ResizeBand band = usualBand();
    change(band);
    return band;
}

/// The kind by the ranges written out, for any point.
int kindByRanges(const ResizeBand &band, int x, int y)
{
    const int h = band.borderWidth / 2;
    const int s = int(band.shadowWidth * band.devicePixelRatio);
    const auto [l, t, r, b] = band.window;
    const bool left = l + s - h <= x && x < l + s + h && t + s <= y && y < b - s;
    const bool right = r - s - h <= x && x < r - s + h && t + s <= y && y < b - s;
    const bool top = t + s - h <= y && y < t + s + h && l + s <= x && x <= r - s;
    const bool bottom = b - s - h <= y && y < b - s + h && l + s <= x && x <= r - s;
    const bool w = band.canResizeWidth;
    const bool v = band.canResizeHeight;
    if (w && v && top && right)
        return 14;
    if (w && v && top && left)
        return 13;
    if (w && v && bottom && right)
        return 17;
    if (w && v && bottom && left)
        return 16;
    if (v && top)
        return 12;
    if (v && bottom)
        return 15;
    if (w && right)
        return 11;
    if (w && left)
        return 10;
    return 1;
}

} // namespace

class TestFrameHitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edgeIsFoundAroundTheVisibleBorder_data()
    {
        QTest::addColumn<ResizeBand>("band");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<int>("kind");
        const ResizeBand usual = usualBand();
        QTest::newRow("middle") << usual << QPoint(400, 400) << 1;
        QTest::newRow("outer corner is shadow") << usual << QPoint(100, 200) << 1;
        QTest::newRow("left, first column") << usual << QPoint(118, 400) << 10;
        QTest::newRow("before left") << usual << QPoint(117, 400) << 1;
        QTest::newRow("left, last column") << usual << QPoint(121, 400) << 10;
        QTest::newRow("behind left") << usual << QPoint(122, 400) << 1;
        QTest::newRow("right, first column") << usual << QPoint(718, 400) << 11;
        QTest::newRow("before right") << usual << QPoint(717, 400) << 1;
        QTest::newRow("right, last column") << usual << QPoint(721, 400) << 11;
        QTest::newRow("behind right") << usual << QPoint(722, 400) << 1;
        QTest::newRow("top, first row") << usual << QPoint(400, 218) << 12;
        QTest::newRow("before top") << usual << QPoint(400, 217) << 1;
        QTest::newRow("top, last row") << usual << QPoint(400, 221) << 12;
        QTest::newRow("below top") << usual << QPoint(400, 222) << 1;
        QTest::newRow("bottom, first row") << usual << QPoint(400, 658) << 15;
        QTest::newRow("before bottom") << usual << QPoint(400, 657) << 1;
        QTest::newRow("bottom, last row") << usual << QPoint(400, 661) << 15;
        QTest::newRow("below bottom") << usual << QPoint(400, 662) << 1;
        // The ranges along the border are not symmetrical: the last column counts, the last row doesn't.
        QTest::newRow("top ends with the column of the border") << usual << QPoint(720, 219) << 12;
        QTest::newRow("bottom ends with the column of the border") << usual << QPoint(720, 661) << 15;
        QTest::newRow("left ends before the row of the border") << usual << QPoint(119, 660) << 1;
        QTest::newRow("right ends before the row of the border") << usual << QPoint(721, 660) << 1;
        QTest::newRow("top begins at the border") << usual << QPoint(119, 219) << 1;
        QTest::newRow("left begins at the border") << usual << QPoint(119, 219) << 1;
        QTest::newRow("top left") << usual << QPoint(120, 220) << 13;
        QTest::newRow("top right") << usual << QPoint(720, 220) << 14;
        QTest::newRow("bottom left") << usual << QPoint(121, 659) << 16;
        QTest::newRow("bottom right") << usual << QPoint(719, 659) << 17;

        const ResizeBand fixedWidth = with([](ResizeBand &band) { band.canResizeWidth = false; });
        QTest::newRow("fixed width: no left") << fixedWidth << QPoint(119, 400) << 1;
        QTest::newRow("fixed width: no right") << fixedWidth << QPoint(719, 400) << 1;
        QTest::newRow("fixed width: top") << fixedWidth << QPoint(400, 220) << 12;
        QTest::newRow("fixed width: bottom") << fixedWidth << QPoint(400, 660) << 15;
        QTest::newRow("fixed width: a corner is top") << fixedWidth << QPoint(120, 220) << 12;
        QTest::newRow("fixed width: a corner is bottom") << fixedWidth << QPoint(719, 659) << 15;
        const ResizeBand fixedHeight = with([](ResizeBand &band) { band.canResizeHeight = false; });
        QTest::newRow("fixed height: left") << fixedHeight << QPoint(119, 400) << 10;
        QTest::newRow("fixed height: no top") << fixedHeight << QPoint(400, 220) << 1;
        QTest::newRow("fixed height: a corner is right") << fixedHeight << QPoint(720, 220) << 11;
        const ResizeBand fixed =
            with([](ResizeBand &band) { band.canResizeWidth = band.canResizeHeight = false; });
        QTest::newRow("fixed size: no left") << fixed << QPoint(119, 400) << 1;
        QTest::newRow("fixed size: no corner") << fixed << QPoint(120, 220) << 1;

        const ResizeBand thin = with([](ResizeBand &band) { band.borderWidth = 1; });
        QTest::newRow("width 1 has no band") << thin << QPoint(120, 400) << 1;
        const ResizeBand odd = with([](ResizeBand &band) { band.borderWidth = 5; });
        QTest::newRow("an odd width is cut") << odd << QPoint(117, 400) << 1;
        QTest::newRow("an odd width, inside") << odd << QPoint(118, 400) << 10;

        const ResizeBand doubled = with([](ResizeBand &band) { band.devicePixelRatio = 2.0; });
        QTest::newRow("ratio 2: shadow scales") << doubled << QPoint(138, 400) << 10;
        QTest::newRow("ratio 2: border does not") << doubled << QPoint(137, 400) << 1;
        QTest::newRow("ratio 2: unscaled place is shadow") << doubled << QPoint(119, 400) << 1;
        const ResizeBand uneven = with([](ResizeBand &band) {
            band.devicePixelRatio = 1.25;
            band.shadowWidth = 7; // 8.75 is cut to 8
        });
        QTest::newRow("an uneven ratio cuts the shadow") << uneven << QPoint(106, 400) << 10;
        QTest::newRow("an uneven ratio, before") << uneven << QPoint(105, 400) << 1;
        const ResizeBand bare = with([](ResizeBand &band) { band.shadowWidth = 0; });
        QTest::newRow("no shadow") << bare << QPoint(101, 400) << 10;
        const ResizeBand negative = with([](ResizeBand &band) { band.window = {-700, -500, -100, -50}; });
        QTest::newRow("screens left of the first one") << negative << QPoint(-681, -300) << 10;
        QTest::newRow("screens above the first one") << negative << QPoint(-400, -481) << 12;

        const ResizeBand tiny = with([](ResizeBand &band) { band.window = {0, 0, 42, 42}; });
        QTest::newRow("of overlapping bands the right one wins") << tiny << QPoint(20, 20) << 14;
    }
    void edgeIsFoundAroundTheVisibleBorder()
    {
        QFETCH(ResizeBand, band);
        QFETCH(QPoint, point);
        QFETCH(int, kind);
        QCOMPARE(int(edgeAt(band, point)), kind);
        QCOMPARE(kindByRanges(band, point.x(), point.y()), kind);
    }

    void everyPointOfASmallWindowFollowsTheRanges()
    {
        for (const int border : {1, 2, 3, 8, 20}) {
            for (const bool width : {true, false}) {
                for (const bool height : {true, false}) {
                    ResizeBand band;
                    band.window = {-5, -3, 45, 37};
                    band.borderWidth = border;
                    band.shadowWidth = 6;
                    band.devicePixelRatio = 1.5;
                    band.canResizeWidth = width;
                    band.canResizeHeight = height;
                    for (int y = -12; y < 50; ++y) {
                        for (int x = -14; x < 60; ++x) {
                            const int expected = kindByRanges(band, x, y);
                            QVERIFY2(int(edgeAt(band, {x, y})) == expected,
                                     qPrintable(QStringLiteral("border %1 at %2, %3: expected %4")
                                                    .arg(border)
                                                    .arg(x)
                                                    .arg(y)
                                                    .arg(expected)));
                        }
                    }
                }
            }
        }
    }

    void edgesHaveTheirCursors_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Qt::CursorShape>("shape");
        QTest::newRow("left") << 10 << Qt::SizeHorCursor;
        QTest::newRow("right") << 11 << Qt::SizeHorCursor;
        QTest::newRow("top") << 12 << Qt::SizeVerCursor;
        QTest::newRow("top left") << 13 << Qt::SizeFDiagCursor;
        QTest::newRow("top right") << 14 << Qt::SizeBDiagCursor;
        QTest::newRow("bottom") << 15 << Qt::SizeVerCursor;
        QTest::newRow("bottom left") << 16 << Qt::SizeBDiagCursor;
        QTest::newRow("bottom right") << 17 << Qt::SizeFDiagCursor;
    }
    void edgesHaveTheirCursors()
    {
        QFETCH(int, kind);
        QFETCH(Qt::CursorShape, shape);
        QVERIFY(isEdge(kind));
        QCOMPARE(cursorShapeOf(kind), shape);
    }

    void onlyTheCodesOfEdgesAreEdges()
    {
        for (int kind = -1; kind < 30; ++kind)
            QCOMPARE(isEdge(kind), kind >= 10 && kind <= 17);
    }

    void nativePointsBecomeLogicalOnes_data()
    {
        QTest::addColumn<QPoint>("native");
        QTest::addColumn<double>("windowRatio");
        QTest::addColumn<QPoint>("origin");
        QTest::addColumn<double>("screenRatio");
        QTest::addColumn<QPoint>("logical");
        QTest::newRow("unscaled") << QPoint(101, 57) << 1.0 << QPoint(1920, 0) << 1.0 << QPoint(101, 57);
        QTest::newRow("doubled") << QPoint(101, 57) << 2.0 << QPoint(0, 0) << 2.0 << QPoint(50, 28);
        QTest::newRow("doubled, second screen")
            << QPoint(2001, 57) << 2.0 << QPoint(1921, -101) << 2.0 << QPoint(1960, -21);
        QTest::newRow("offset and sum are cut one after the other")
            << QPoint(10, 10) << 1.5 << QPoint(100, -100) << 1.5 << QPoint(72, -59);
        QTest::newRow("negative") << QPoint(-301, -7) << 2.0 << QPoint(0, 0) << 2.0 << QPoint(-150, -3);
        QTest::newRow("screen unscaled, window scaled")
            << QPoint(100, 100) << 2.0 << QPoint(500, 500) << 1.0 << QPoint(50, 50);
    }
    void nativePointsBecomeLogicalOnes()
    {
        QFETCH(QPoint, native);
        QFETCH(double, windowRatio);
        QFETCH(QPoint, origin);
        QFETCH(double, screenRatio);
        QFETCH(QPoint, logical);
        QCOMPARE(toLogicalPoint(native, windowRatio, origin, screenRatio), logical);
    }

    void areasAreAskedInTheirOrder()
    {
        TitleAreas areas;
        areas.title = QRect(0, 0, 300, 40);
        areas.extra = {QRect(0, 20, 50, 100), QRect(200, 0, 20, 80)};
        areas.excluded = {QRect(250, 0, 50, 40), QRect(205, 0, 5, 20)};
        using Kind = std::optional<HitKind>;
        QCOMPARE(areaAt(areas, {100, 10}), Kind(HitCaption)); // title
        QCOMPARE(areaAt(areas, {10, 100}), Kind(HitCaption)); // extra, outside the title
        QCOMPARE(areaAt(areas, {210, 70}), Kind(HitCaption)); // the second extra
        QCOMPARE(areaAt(areas, {260, 10}), Kind(HitClient));  // excluded above the title
        QCOMPARE(areaAt(areas, {206, 10}), Kind(HitClient));  // excluded above extra and title
        QCOMPARE(areaAt(areas, {100, 60}), Kind());
        QCOMPARE(areaAt(areas, {299, 39}), Kind(HitClient)); // last pixel
        QCOMPARE(areaAt(areas, {300, 10}), Kind());
        QCOMPARE(areaAt(areas, {100, 40}), Kind());
        QCOMPARE(areaAt(areas, {0, 0}), Kind(HitCaption));
        QCOMPARE(areaAt(TitleAreas(), {0, 0}), Kind());
        areas.title = QRect(5, 5, 0, 0);
        areas.extra.clear();
        areas.excluded.clear();
        QCOMPARE(areaAt(areas, {5, 5}), Kind()); // an item without a size is nowhere
    }

    void nativeRectanglesAreDividedAndCut_data()
    {
        QTest::addColumn<QRect>("native"); // by its outer edges
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QRect>("logical");
        QTest::newRow("unscaled") << QRect(10, 20, 101, 33) << 1.0 << QRect(10, 20, 101, 33);
        QTest::newRow("a width of 101 at 1.5 is 67") << QRect(0, 0, 101, 33) << 1.5 << QRect(0, 0, 67, 22);
        QTest::newRow("negative origins are cut towards 0")
            << QRect(-101, -33, 101, 33) << 1.5 << QRect(-67, -22, 67, 22);
        QTest::newRow("null") << QRect(0, 0, 0, 0) << 1.5 << QRect();
        QTest::newRow("position and size are divided apart") << QRect(3, 3, 3, 3) << 2.0 << QRect(1, 1, 1, 1);
    }
    void nativeRectanglesAreDividedAndCut()
    {
        QFETCH(QRect, native);
        QFETCH(double, ratio);
        QFETCH(QRect, logical);
        const NativeRect rect{native.x(), native.y(), native.x() + native.width(),
                              native.y() + native.height()};
        QCOMPARE(toLogicalRect(rect, ratio), logical);
    }
};

QTEST_APPLESS_MAIN(TestFrameHitTest)
#include "tst_framehittest.moc"
