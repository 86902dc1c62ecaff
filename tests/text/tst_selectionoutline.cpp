// The outline of a selection: rectangles of lines in, polygons out.

#include "text/selectionoutline.h"

#include <QtTest>

#include <cmath>

using drawabletext::FanPolygon;

namespace {

using Rects = QVector<QRectF>;
using Groups = QVector<Rects>;

constexpr double tolerance = 1e-9;

// ---- the reference: corners written down as what they look like, not how they are reached

/// A quarter circle by its corner of the rectangle, 5 degrees a step, from the vector of its first point.
FanPolygon quarter(QPointF centre, QPointF firstPoint, double radius)
{
    FanPolygon points;
    for (int degrees = 0; degrees < 90; degrees += 5) {
        // Turned clockwise on a screen, by rotating the vector.
        const double c = std::cos(qDegreesToRadians(double(degrees)));
        const double s = std::sin(qDegreesToRadians(double(degrees)));
        points.append(centre + QPointF(firstPoint.x() * c - firstPoint.y() * s,
                                       firstPoint.x() * s + firstPoint.y() * c) *
                                   radius);
    }
    return points;
}

FanPolygon backwards(const FanPolygon &points)
{
    FanPolygon result;
    for (const QPointF &point : points)
        result.prepend(point);
    return result;
}

constexpr QPointF toTheLeft(-1, 0);
constexpr QPointF upwards(0, -1);
constexpr QPointF toTheRight(1, 0);
constexpr QPointF downwards(0, 1);

FanPolygon roundTopLeft(const QRectF &r, double radius)
{
    return quarter(r.topLeft() + QPointF(radius, radius), toTheLeft, radius);
}
FanPolygon roundTopRight(const QRectF &r, double radius)
{
    return quarter(r.topRight() + QPointF(-radius, radius), upwards, radius);
}
FanPolygon roundBottomRight(const QRectF &r, double radius)
{
    return quarter(r.bottomRight() + QPointF(-radius, -radius), toTheRight, radius);
}
FanPolygon roundBottomLeft(const QRectF &r, double radius)
{
    return quarter(r.bottomLeft() + QPointF(radius, -radius), downwards, radius);
}
/// From the edge above, in a hollow curve, to the right edge of a shorter line.
FanPolygon hollowTopRight(const QRectF &r, double radius)
{
    return backwards(quarter(r.topRight() + QPointF(radius, radius), toTheLeft, radius));
}
FanPolygon filletBottomRight(const QRectF &r, double radius)
{
    return FanPolygon{r.bottomRight()} +
           backwards(quarter(r.bottomRight() + QPointF(radius, -radius), downwards, radius));
}
FanPolygon filletBottomLeft(const QRectF &r, double radius)
{
    return FanPolygon{r.bottomLeft()} +
           backwards(quarter(r.bottomLeft() + QPointF(-radius, -radius), toTheRight, radius));
}
FanPolygon square(QPointF corner)
{
    return {corner};
}

// ---- measures

double cross(QPointF a, QPointF b)
{
    return a.x() * b.y() - a.y() * b.x();
}

double polygonArea(const FanPolygon &polygon)
{
    double twice = 0.0;
    for (int i = 0; i < polygon.size(); ++i)
        twice += cross(polygon.at(i), polygon.at((i + 1) % polygon.size()));
    return std::abs(twice) / 2.0;
}

/// What the triangles of the fan cover, overlaps counted again: more than the polygon's area as soon as the
/// hub does not see some edge.
double fanArea(const FanPolygon &polygon)
{
    double twice = 0.0;
    for (int i = 1; i + 1 < polygon.size(); ++i)
        twice +=
            std::abs(cross(polygon.at(i) - polygon.constFirst(), polygon.at(i + 1) - polygon.constFirst()));
    return twice / 2.0;
}

bool fanContains(const FanPolygon &polygon, QPointF point)
{
    for (int i = 1; i + 1 < polygon.size(); ++i) {
        const QPointF a = polygon.constFirst();
        const QPointF b = polygon.at(i);
        const QPointF c = polygon.at(i + 1);
        const double ab = cross(b - a, point - a);
        const double bc = cross(c - b, point - b);
        const double ca = cross(a - c, point - c);
        if ((ab > 0 && bc > 0 && ca > 0) || (ab < 0 && bc < 0 && ca < 0))
            return true;
    }
    return false;
}

bool fansContain(const QVector<FanPolygon> &polygons, QPointF point)
{
    return std::any_of(polygons.cbegin(), polygons.cend(),
                       [point](const FanPolygon &polygon) { return fanContains(polygon, point); });
}

void compare(const FanPolygon &actual, const FanPolygon &expected, int index)
{
    QVERIFY2(actual.size() == expected.size(),
             qPrintable(QStringLiteral("polygon %1 has %2 points instead of %3")
                            .arg(index)
                            .arg(actual.size())
                            .arg(expected.size())));
    for (int i = 0; i < actual.size(); ++i) {
        const QPointF difference = actual.at(i) - expected.at(i);
        QVERIFY2(std::abs(difference.x()) < tolerance && std::abs(difference.y()) < tolerance,
                 qPrintable(QStringLiteral("polygon %1, point %2: (%3, %4) instead of (%5, %6)")
                                .arg(index)
                                .arg(i)
                                .arg(actual.at(i).x())
                                .arg(actual.at(i).y())
                                .arg(expected.at(i).x())
                                .arg(expected.at(i).y())));
    }
}

} // namespace

Q_DECLARE_METATYPE(QVector<FanPolygon>)
Q_DECLARE_METATYPE(Groups)

class tst_SelectionOutline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arcIsEighteenPointsWithoutTheEndOfTheQuarter();
    void reversedArcHasTheSamePointsInOppositeOrder();

    void groupsFollowTheTouch_data();
    void groupsFollowTheTouch();
    void widthsAreRoundedUpAndStayRounded();
    void linesAreCutAtTheRightLimitAndComparedAsCut();
    void groupingTwiceChangesNothing();

    void outlineFollowsTheNeighbours_data();
    void outlineFollowsTheNeighbours();
    void singleLineIsRoundAtAllCorners();
    void radiusZeroGivesThePlainRectangles();
    void outlineFillsTheLinesAndLittleElse_data();
    void outlineFillsTheLinesAndLittleElse();
};

void tst_SelectionOutline::arcIsEighteenPointsWithoutTheEndOfTheQuarter()
{
    const FanPolygon points = drawabletext::arc({10, 20}, 4, 180);
    QCOMPARE(points.size(), 18);
    compare(points, quarter({10, 20}, toTheLeft, 4), 0);
    // From the leftmost point towards the top, which belongs to the next quarter.
    QCOMPARE(points.constFirst(), QPointF(6, 20));
    QVERIFY(points.constLast().y() > 16.0);
    QVERIFY(points.constLast().x() < 10.0);
}

void tst_SelectionOutline::reversedArcHasTheSamePointsInOppositeOrder()
{
    const FanPolygon forward = drawabletext::arc({10, 20}, 4, 450);
    const FanPolygon reversed = drawabletext::arc({10, 20}, 4, 450, true);
    compare(reversed, backwards(forward), 0);
    compare(forward, quarter({10, 20}, downwards, 4), 0);
}

void tst_SelectionOutline::groupsFollowTheTouch_data()
{
    QTest::addColumn<Rects>("rects");
    QTest::addColumn<Groups>("groups");

    const QRectF first(0, 0, 50, 10);
    const QRectF second(0, 10, 40, 10);
    const QRectF third(0, 20, 30, 10);
    QTest::newRow("nothing selected") << Rects{} << Groups{};
    QTest::newRow("one line") << Rects{first} << Groups{{first}};
    QTest::newRow("three lines that touch") << Rects{first, second, third} << Groups{{first, second, third}};
    QTest::newRow("a gap between lines") << Rects{first, third} << Groups{{first}, {third}};
    QTest::newRow("lower line first") << Rects{second, first} << Groups{{second, first}};

    const QRectF farRight(60, 0, 20, 10);
    QTest::newRow("lines that lie beside each other")
        << Rects{farRight, second} << Groups{{farRight}, {second}};
    const QRectF justBeside(40, 0, 20, 10);
    QTest::newRow("only the corners touch") << Rects{justBeside, second} << Groups{{justBeside}, {second}};

    const QRectF indented(5, 0, 45, 10);
    const QRectF emptyInside(10, 10, 0, 0);
    const QRectF belowEmpty(5, 10, 30, 10);
    QTest::newRow("an empty rectangle does not end the group")
        << Rects{indented, emptyInside, belowEmpty} << Groups{{indented, belowEmpty}};
    QTest::newRow("an empty rectangle apart is a group of none")
        << Rects{first, QRectF(0, 30, 0, 10)} << Groups{{first}, {}};
}

void tst_SelectionOutline::groupsFollowTheTouch()
{
    QFETCH(Rects, rects);
    QFETCH(Groups, groups);
    QCOMPARE(drawabletext::groupSelectionRects(rects, 1000), groups);
}

void tst_SelectionOutline::widthsAreRoundedUpAndStayRounded()
{
    Rects rects{QRectF(0, 0, 10.2, 10), QRectF(0, 10, 7, 10)};
    const Groups groups = drawabletext::groupSelectionRects(rects, 1000);
    const Rects rounded{QRectF(0, 0, 11, 10), QRectF(0, 10, 7, 10)};
    QCOMPARE(rects, rounded);
    QCOMPARE(groups, Groups{rounded});
}

void tst_SelectionOutline::linesAreCutAtTheRightLimitAndComparedAsCut()
{
    Rects rects{QRectF(0, 0, 120, 10), QRectF(0, 10, 99.5, 10)};
    const Groups groups = drawabletext::groupSelectionRects(rects, 100);
    const Rects cut{QRectF(0, 0, 100, 10), QRectF(0, 10, 100, 10)};
    QCOMPARE(rects, cut);
    QCOMPARE(groups, Groups{cut});
    // Equal as cut, so nothing is round between them.
    const auto polygons = drawabletext::outlineGroup(groups.constFirst(), 2);
    QCOMPARE(polygons.size(), 2);
    QVERIFY(polygons.constFirst().contains(QPointF(100, 10)));
}

void tst_SelectionOutline::groupingTwiceChangesNothing()
{
    Rects rects{QRectF(20.25, 0, 120.7, 10), QRectF(0, 10, 99.5, 10), QRectF(0, 20, 0.0, 10)};
    const Groups once = drawabletext::groupSelectionRects(rects, 100.5);
    const Rects kept = rects;
    QCOMPARE(drawabletext::groupSelectionRects(rects, 100.5), once);
    QCOMPARE(rects, kept);
}

void tst_SelectionOutline::outlineFollowsTheNeighbours_data()
{
    QTest::addColumn<Rects>("group");
    QTest::addColumn<QVector<FanPolygon>>("polygons");
    const double r = 3;

    {
        const QRectF a(20, 0, 30, 10);
        const QRectF b(0, 10, 80, 10);
        QTest::newRow("second line longer at both sides")
            << Rects{a, b}
            << QVector<FanPolygon>{filletBottomRight(a, r), filletBottomLeft(a, r),
                                   roundTopLeft(a, r) + roundTopRight(a, r) + square(a.bottomRight()) +
                                       square(a.bottomLeft()),
                                   roundTopLeft(b, r) + roundTopRight(b, r) + roundBottomRight(b, r) +
                                       roundBottomLeft(b, r)};
    }
    {
        const QRectF a(20, 0, 80, 10);
        const QRectF b(0, 10, 60, 10);
        QTest::newRow("second line shorter at the right")
            << Rects{a, b}
            << QVector<FanPolygon>{filletBottomLeft(a, r),
                                   roundTopLeft(a, r) + roundTopRight(a, r) + roundBottomRight(a, r) +
                                       square(a.bottomLeft()),
                                   roundTopLeft(b, r) + hollowTopRight(b, r) + roundBottomRight(b, r) +
                                       roundBottomLeft(b, r)};
    }
    {
        const QRectF a(0, 0, 80, 10);
        const QRectF b(0, 10, 80, 10);
        QTest::newRow("two lines of the same edges")
            << Rects{a, b}
            << QVector<FanPolygon>{roundTopLeft(a, r) + roundTopRight(a, r) + square(a.bottomRight()) +
                                       square(a.bottomLeft()),
                                   square(b.topLeft()) + square(b.topRight()) + roundBottomRight(b, r) +
                                       roundBottomLeft(b, r)};
    }
    {
        const QRectF a(40, 0, 60, 10);
        const QRectF b(0, 10, 70, 10);
        const QRectF c(0, 20, 90, 10);
        const QRectF d(0, 30, 20, 10);
        QTest::newRow("four lines of all shapes")
            << Rects{a, b, c, d}
            << QVector<FanPolygon>{filletBottomLeft(a, r),
                                   roundTopLeft(a, r) + roundTopRight(a, r) + roundBottomRight(a, r) +
                                       square(a.bottomLeft()),
                                   filletBottomRight(b, r),
                                   roundTopLeft(b, r) + hollowTopRight(b, r) + square(b.bottomRight()) +
                                       square(b.bottomLeft()),
                                   square(c.topLeft()) + roundTopRight(c, r) + roundBottomRight(c, r) +
                                       square(c.bottomLeft()),
                                   square(d.topLeft()) + hollowTopRight(d, r) + roundBottomRight(d, r) +
                                       roundBottomLeft(d, r)};
    }
    {
        // Middle lines stay square at the left, whatever is above and below them.
        const QRectF a(0, 0, 50, 10);
        const QRectF b(10, 10, 40, 10);
        const QRectF c(0, 20, 50, 10);
        QTest::newRow("a middle line that begins further right")
            << Rects{a, b, c}
            << QVector<FanPolygon>{filletBottomLeft(a, r),
                                   roundTopLeft(a, r) + roundTopRight(a, r) + square(a.bottomRight()) +
                                       square(a.bottomLeft()),
                                   square(b.topLeft()) + square(b.topRight()) + square(b.bottomRight()) +
                                       square(b.bottomLeft()),
                                   roundTopLeft(c, r) + square(c.topRight()) + roundBottomRight(c, r) +
                                       roundBottomLeft(c, r)};
    }
    {
        const QRectF a(60, 0, 20, 10);
        const QRectF b(0, 10, 40, 10);
        QTest::newRow("first line beyond the end of the second")
            << Rects{a, b}
            << QVector<FanPolygon>{roundTopLeft(a, r) + roundTopRight(a, r) + roundBottomRight(a, r) +
                                       backwards(quarter(a.bottomLeft() + QPointF(-r, -r), toTheRight, r)),
                                   roundTopLeft(b, r) + hollowTopRight(b, r) + roundBottomRight(b, r) +
                                       roundBottomLeft(b, r)};
    }
}

void tst_SelectionOutline::outlineFollowsTheNeighbours()
{
    QFETCH(Rects, group);
    QFETCH(QVector<FanPolygon>, polygons);
    const QVector<FanPolygon> actual = drawabletext::outlineGroup(group, 3);
    QCOMPARE(actual.size(), polygons.size());
    for (int i = 0; i < actual.size(); ++i) {
        compare(actual.at(i), polygons.at(i), i);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_SelectionOutline::singleLineIsRoundAtAllCorners()
{
    const QRectF line(5, 7, 40, 12);
    const QVector<FanPolygon> polygons = drawabletext::outlineGroup({line}, 4);
    QCOMPARE(polygons.size(), 1);
    QCOMPARE(polygons.constFirst().size(), 72);
    compare(polygons.constFirst(),
            roundTopLeft(line, 4) + roundTopRight(line, 4) + roundBottomRight(line, 4) +
                roundBottomLeft(line, 4),
            0);
}

void tst_SelectionOutline::radiusZeroGivesThePlainRectangles()
{
    const QRectF a(20, 0, 30, 10);
    const QRectF b(0, 10, 80, 10);
    for (const FanPolygon &polygon : drawabletext::outlineGroup({a, b}, 0)) {
        for (const QPointF &point : polygon) {
            const Rects rects{a, b};
            QVERIFY(std::any_of(rects.cbegin(), rects.cend(), [point](const QRectF &rect) {
                return rect.topLeft() == point || rect.topRight() == point || rect.bottomLeft() == point ||
                       rect.bottomRight() == point;
            }));
        }
    }
    QCOMPARE(polygonArea(drawabletext::outlineGroup({a}, 0).constFirst()), 300.0);
}

void tst_SelectionOutline::outlineFillsTheLinesAndLittleElse_data()
{
    QTest::addColumn<Rects>("group");
    QTest::newRow("one line") << Rects{QRectF(3, 0, 60, 20)};
    QTest::newRow("growing") << Rects{QRectF(30, 0, 50, 20), QRectF(0, 20, 100, 20), QRectF(0, 40, 120, 20)};
    QTest::newRow("shrinking") << Rects{QRectF(30, 0, 90, 20), QRectF(0, 20, 100, 20), QRectF(0, 40, 50, 20)};
    QTest::newRow("waist") << Rects{QRectF(30, 0, 90, 20), QRectF(0, 20, 60, 20), QRectF(0, 40, 110, 20)};
    QTest::newRow("same edges") << Rects{QRectF(0, 0, 90, 20), QRectF(0, 20, 90, 20), QRectF(0, 40, 90, 20)};
}

void tst_SelectionOutline::outlineFillsTheLinesAndLittleElse()
{
    QFETCH(Rects, group);
    const double radius = 4;
    const QVector<FanPolygon> polygons = drawabletext::outlineGroup(group, radius);

    for (const FanPolygon &polygon : polygons) {
        // A fan is right only where its hub sees the whole polygon.
        QVERIFY(std::abs(fanArea(polygon) - polygonArea(polygon)) < tolerance * 1000);
    }

    for (double y = -10.43; y < 75; y += 0.91) {
        for (double x = -10.37; x < 140; x += 0.83) {
            const QPointF point(x, y);
            const bool covered = fansContain(polygons, point);
            bool inCore = false;
            bool near = false;
            for (const QRectF &rect : group) {
                // All of a line but its corners.
                inCore |= rect.adjusted(radius, 0.01, -radius, -0.01).contains(point) ||
                          rect.adjusted(0.01, radius, -0.01, -radius).contains(point);
                near |= rect.adjusted(-radius, 0, radius, 0).contains(point);
            }
            if (inCore)
                QVERIFY2(covered, qPrintable(QStringLiteral("hole at (%1, %2)").arg(x).arg(y)));
            if (!near)
                QVERIFY2(!covered, qPrintable(QStringLiteral("spill at (%1, %2)").arg(x).arg(y)));
        }
    }
}

QTEST_APPLESS_MAIN(tst_SelectionOutline)
#include "tst_selectionoutline.moc"
