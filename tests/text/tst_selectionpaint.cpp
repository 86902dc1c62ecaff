// The outline of a selection: its nodes, and the pixels that come of them.

#include "outlinereference.h"
#include "paintstage.h"
#include "pixels.h"
#include "textreference.h"

#include <QApplication>
#include <QLineF>
#include <QtTest>

namespace {

constexpr unsigned triangleFan = 6;

QString polygonDifference(const QVector<PaintedNodes::Polygon> &actual,
                          const QVector<outline::Polygon> &expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1 polygons, expected %2").arg(actual.size()).arg(expected.size());
    for (int i = 0; i < actual.size(); ++i) {
        const QVector<QPointF> &points = actual.at(i).points;
        if (points.size() != expected.at(i).size())
            return QStringLiteral("polygon %1 has %2 points, expected %3")
                .arg(i)
                .arg(points.size())
                .arg(expected.at(i).size());
        for (int k = 0; k < points.size(); ++k) {
            // Vertices are single-precision.
            if ((points.at(k) - expected.at(i).at(k)).manhattanLength() > 0.01)
                return QStringLiteral("point %1 of polygon %2 is (%3, %4), expected (%5, %6)")
                    .arg(k)
                    .arg(i)
                    .arg(points.at(k).x())
                    .arg(points.at(k).y())
                    .arg(expected.at(i).at(k).x())
                    .arg(expected.at(i).at(k).y());
        }
    }
    return QString();
}

} // namespace

class TestSelectionPaint : public QObject
{
    Q_OBJECT

    PaintStage stage;

    /// A shown item without visible glyphs whose selected lines are `rects`.
    std::unique_ptr<PaintProbe> showSelection(const QVector<QRectF> &rects, double radius)
    {
        auto item = stage.show(QStringLiteral("."), 300);
        item->setColor(Qt::transparent);
        item->setSelectedTextColor(Qt::transparent);
        item->setSelectionCornerRadius(radius);
        item->editableState().selectionRects = rects;
        item->update();
        return item;
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY2(stage.open(), "no window with OpenGL"); }
    void init() { stage.guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(stage.guard->unexpected(), QStringList()); }
    void cleanupTestCase() { stage.window.reset(); }

    void withoutASelectionThereIsNoSelectionNode()
    {
        const auto item = stage.show(QStringLiteral("abc"));
        (void)stage.window->picture();
        PaintedNodes nodes = item->painted();
        QVERIFY(nodes.isTextNode);
        QVERIFY(nodes.glyphNodes > 0);
        QVERIFY(!nodes.hasSelection);

        // Nor after a selection has come and gone.
        item->selectAll();
        (void)stage.window->picture();
        QVERIFY(item->painted().hasSelection);
        item->deselect();
        (void)stage.window->picture();
        nodes = item->painted();
        QVERIFY(!nodes.hasSelection);
        QVERIFY(item->state()->selectionRootNode == nullptr);
    }

    void selectionIsTheFirstChildOfTheTextNode()
    {
        const auto item = stage.show(QStringLiteral("abc \U0001F600\nabcdef"));
        item->selectAll();
        (void)stage.window->picture();
        const PaintedNodes nodes = item->painted();
        QVERIFY(nodes.isTextNode);
        QVERIFY(nodes.hasSelection);
        QVERIFY(nodes.selectionDrawsNothing);
        QVERIFY(nodes.glyphsFollowSelection);
        QVERIFY(nodes.imagesAreLast);
        QVERIFY(!nodes.polygons.isEmpty());
        for (const PaintedNodes::Polygon &polygon : nodes.polygons) {
            QCOMPARE(polygon.drawingMode, triangleFan);
            QCOMPARE(polygon.color, QColor(Qt::yellow));
            QVERIFY(polygon.ownsEverything);
            QCOMPARE(polygon.children, 0);
        }
    }

    void repaintingReplacesTheWholeSelection()
    {
        const auto item = stage.show(QStringLiteral("abc\nabcdef\nab"));
        item->selectAll();
        (void)stage.window->picture();
        const int polygons = item->painted().polygons.size();
        QVERIFY(polygons > 2);
        const int frames = item->painted().frames;
        item->update();
        (void)stage.window->picture();
        QVERIFY(item->painted().frames > frames);
        QCOMPARE(item->painted().polygons.size(), polygons);
        item->doubleClick(TextReference(item->state()).center(1, 1));
        (void)stage.window->picture();
        QCOMPARE(item->painted().polygons.size(), 1);
    }

    void singleLineIsARoundedRectangleOfSeventyTwoVertices()
    {
        const double R = 4;
        const auto item = showSelection({QRectF(10, 20, 100, 24)}, R);
        (void)stage.window->picture();
        const QVector<PaintedNodes::Polygon> polygons = item->painted().polygons;
        QCOMPARE(polygons.size(), 1);
        const QVector<QPointF> &points = polygons.first().points;
        QCOMPARE(points.size(), 72);
        // Where the four arcs begin, clockwise from the left end of the top-left one.
        const QPointF starts[] = {{10, 24}, {106, 20}, {110, 40}, {14, 44}};
        for (int corner = 0; corner < 4; ++corner)
            QVERIFY((points.at(18 * corner) - starts[corner]).manhattanLength() < 0.001);
        // And all of them lie on their circles.
        const QPointF centres[] = {{14, 24}, {106, 24}, {106, 40}, {14, 40}};
        for (int i = 0; i < 72; ++i)
            QVERIFY(qAbs(QLineF(points.at(i), centres[i / 18]).length() - R) < 0.001);
    }

    void longerSecondLineHasAFilletInTheInnerCorner()
    {
        const auto item = showSelection({QRectF(0, 0, 50, 20), QRectF(0, 20, 100, 20)}, 4);
        (void)stage.window->picture();
        const QVector<PaintedNodes::Polygon> polygons = item->painted().polygons;
        QCOMPARE(polygons.size(), 3);
        // The fillet fans out from the inner corner, before the line that it belongs to.
        QCOMPARE(polygons.at(0).points.size(), 19);
        QCOMPARE(polygons.at(0).points.first(), QPointF(50, 20));
        // The first line: two round corners and two square ones.
        QCOMPARE(polygons.at(1).points.size(), 18 + 18 + 1 + 1);
        QCOMPARE(polygons.at(1).points.at(36), QPointF(50, 20));
        QCOMPARE(polygons.at(1).points.at(37), QPointF(0, 20));
        // The second: square only where the first one stands on it.
        QCOMPARE(polygons.at(2).points.size(), 1 + 18 + 18 + 18);
        QCOMPARE(polygons.at(2).points.first(), QPointF(0, 20));
    }

    void secondLineThatSticksOutToTheLeftIsRoundThere()
    {
        const auto item = showSelection({QRectF(30, 0, 70, 20), QRectF(0, 20, 50, 20)}, 4);
        (void)stage.window->picture();
        const QVector<PaintedNodes::Polygon> polygons = item->painted().polygons;
        QCOMPARE(polygons.size(), 3);
        QCOMPARE(polygons.at(0).points.size(), 19);
        QCOMPARE(polygons.at(0).points.first(), QPointF(30, 20));
        QCOMPARE(polygons.at(1).points.size(), 18 + 18 + 18 + 1);
        QCOMPARE(polygons.at(2).points.size(), 72);
    }

    void outlineJoinsTheLines_data()
    {
        QTest::addColumn<QVector<QRectF>>("rects");
        QTest::addColumn<int>("polygons");
        using Rects = QVector<QRectF>;
        QTest::newRow("one line") << Rects{{10, 10, 80, 20}} << 1;
        QTest::newRow("second longer") << Rects{{0, 0, 50, 20}, {0, 20, 100, 20}} << 3;
        QTest::newRow("second shorter") << Rects{{0, 0, 100, 20}, {0, 20, 50, 20}} << 2;
        QTest::newRow("as long") << Rects{{0, 0, 100, 20}, {0, 20, 100, 20}} << 2;
        QTest::newRow("from the middle") << Rects{{30, 0, 70, 20}, {0, 20, 50, 20}} << 3;
        QTest::newRow("from the middle, second longer") << Rects{{30, 0, 50, 20}, {0, 20, 100, 20}} << 4;
        QTest::newRow("three lines") << Rects{{40, 0, 60, 20}, {0, 20, 120, 20}, {0, 40, 30, 20}} << 5;
        QTest::newRow("three lines, the middle short")
            << Rects{{0, 0, 120, 20}, {0, 20, 40, 20}, {0, 40, 100, 20}} << 4;
        // A line that starts behind the end of the next one is no neighbour of it.
        QTest::newRow("apart sideways") << Rects{{60, 0, 60, 20}, {0, 20, 40, 20}} << 2;
        QTest::newRow("apart by a gap") << Rects{{0, 0, 60, 20}, {0, 25, 60, 20}} << 2;
        QTest::newRow("two groups of two")
            << Rects{{0, 0, 60, 20}, {0, 20, 40, 20}, {0, 60, 60, 20}, {0, 80, 40, 20}} << 4;
        QTest::newRow("empty first line") << Rects{{0, 0, 0, 20}, {0, 20, 60, 20}} << 1;
        QTest::newRow("empty line between") << Rects{{0, 0, 60, 20}, {0, 20, 0, 20}, {0, 40, 40, 20}} << 2;
        // Where it starts right of the line before, it does not part its neighbours.
        QTest::newRow("indented empty line between")
            << Rects{{0, 0, 60, 20}, {10, 20, 0, 20}, {0, 40, 40, 20}} << 2;
        QTest::newRow("empty line alone") << Rects{{0, 0, 0, 20}} << 0;
        QTest::newRow("three wide line between")
            << Rects{{0, 0, 60, 20}, {0, 20, 3, 20}, {0, 40, 40, 20}} << 4;
        QTest::newRow("past the area") << Rects{{0, 0, 1000, 20}, {0, 20, 2000, 20}} << 2;
        QTest::newRow("fractions") << Rects{{0.5, 0.25, 60.1, 20.5}, {0.5, 20.75, 60.9, 20.5}} << 2;
        QTest::newRow("from the bottom up") << Rects{{0, 20, 60, 20}, {0, 0, 40, 20}} << 2;
    }

    void outlineJoinsTheLines()
    {
        QFETCH(QVector<QRectF>, rects);
        QFETCH(int, polygons);
        for (const double radius : {0.0, 2.0, 8.0}) {
            const auto item = showSelection(rects, radius);
            const double area = 300; // No paddings.
            const QVector<outline::Polygon> expected = outline::polygons(rects, radius, area);
            const QImage picture = stage.window->picture();
            QCOMPARE(item->painted().polygons.size(), polygons);
            QCOMPARE(polygonDifference(item->painted().polygons, expected), QString());

            QImage drawn(picture.size(), QImage::Format_RGB32);
            drawn.fill(Qt::white);
            outline::fillFans(drawn, expected, QPointF(20, 20), QColor(Qt::yellow).rgb());
            // Only pixels whose middle lies on an edge may fall to either side.
            QCOMPARE(pixels::pictureDifference(picture, drawn, {8, 0.001}), QString());
        }
    }

    void withoutARadiusAllPointsOfACornerCoincide()
    {
        const auto item = showSelection({QRectF(10, 20, 100, 24)}, 0);
        (void)stage.window->picture();
        const QVector<QPointF> points = item->painted().polygons.first().points;
        QCOMPARE(points.size(), 72);
        const QPointF corners[] = {{10, 20}, {110, 20}, {110, 44}, {10, 44}};
        for (int i = 0; i < 72; ++i)
            QCOMPARE(points.at(i), corners[i / 18]);
    }

    void widthsAreRoundedUpAndStaySo()
    {
        const auto item = showSelection({QRectF(5, 0, 10.2, 20), QRectF(5, 20, 30, 20)}, 2);
        (void)stage.window->picture();
        QCOMPARE(item->state()->selectionRects.at(0).width(), 11.0);
        QCOMPARE(item->state()->selectionRects.at(1).width(), 30.0);
        item->update();
        (void)stage.window->picture();
        QCOMPARE(item->state()->selectionRects.at(0).width(), 11.0);
    }

    void lineThatRunsPastTheAreaIsCutThere()
    {
        const auto item = stage.show(QStringLiteral("."), 300);
        item->setLeftPadding(10);
        item->setRightPadding(30);
        item->setReserveSpace(true);
        item->editableState().selectionRects = {QRectF(10, 0, 400, 20), QRectF(10, 20, 500, 20)};
        item->update();
        (void)stage.window->picture();
        // Paddings go off the text area, and the right one comes back.
        const double limit = 300 - 10 - 30 - item->state()->xWidth + 30;
        const QVector<PaintedNodes::Polygon> polygons = item->painted().polygons;
        // Both are cut to one length, so no fillet lies between them.
        QCOMPARE(polygons.size(), 2);
        double right = 0;
        for (const PaintedNodes::Polygon &polygon : polygons) {
            for (const QPointF point : polygon.points)
                right = qMax(right, point.x());
        }
        QVERIFY(qAbs(right - limit) < 0.01);
    }

    void selectionOfATextIsDrawnAroundItsLines()
    {
        const auto item = stage.show(QStringLiteral("abcdef\nabcdefghijkl\n\nabc"));
        item->setColor(Qt::transparent);
        item->setSelectedTextColor(Qt::transparent);
        const TextReference reference(item->state());
        item->drag(reference.leftHalf(0, 3), reference.rightHalf(3, 1));
        const QVector<outline::Polygon> expected =
            outline::polygons(reference.selectionRects(0, 3, 3, 1), 2, 400);
        const QImage picture = stage.window->picture();
        QCOMPARE(polygonDifference(item->painted().polygons, expected), QString());
        QImage drawn(picture.size(), QImage::Format_RGB32);
        drawn.fill(Qt::white);
        outline::fillFans(drawn, expected, QPointF(20, 20), QColor(Qt::yellow).rgb());
        QCOMPARE(pixels::pictureDifference(picture, drawn, {8, 0.001}), QString());
    }

    void selectionColorIsTakenAtTheNextPaint()
    {
        const auto item = stage.show(QStringLiteral("abc"));
        item->selectAll();
        (void)stage.window->picture();
        item->setSelectionColor(Qt::cyan);
        QVERIFY(pixels::count(stage.window->picture(item.get()), Qt::cyan) > 0);
        QCOMPARE(item->painted().polygons.first().color, QColor(Qt::cyan));
    }

    void mismatchOfLayoutsAndRangesGivesAnEmptyFrame()
    {
        const auto item = stage.show(QStringLiteral("abc \U0001F600"));
        item->selectAll();
        QVERIFY(pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        const QVector<SelectionRange> ranges = item->state()->selectionRanges;
        for (const QVector<SelectionRange> &wrong : {ranges + ranges, QVector<SelectionRange>()}) {
            item->editableState().selectionRanges = wrong;
            item->update();
            QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
            QVERIFY(item->painted().isTextNode);
            QCOMPARE(item->painted().children, 0);
        }
        item->editableState().selectionRanges = ranges;
        item->update();
        QVERIFY(pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        QVERIFY(item->painted().hasSelection);
    }

    void itemWithoutTextDrawsNothing()
    {
        const auto item = stage.show(QString());
        item->selectAll();
        QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        QVERIFY(!item->painted().hasSelection);
        QCOMPARE(item->painted().images.size(), 0);
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    TestSelectionPaint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_selectionpaint.moc"
