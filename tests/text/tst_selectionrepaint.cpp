// A moving selection is painted by changing few nodes; what is on screen must be what a fresh set of nodes
// shows.

#include "itemwindow.h"
#include "pixels.h"
#include "pointer.h"
#include "text/drawabletext.h"

#include <QApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QSGNode>
#include <QSet>
#include <QtTest>

#include <memory>

namespace {

/// The twin stands elsewhere, which may round a shade differently.
constexpr pixels::Tolerance nearlySame = {4, 0.0};

/// An item that tells how many of its nodes survived the last frame.
class NodeCounter : public DrawableText
{
public:
    struct Nodes
    {
        int frames = 0;
        int all = 0;
        int kept = 0;
    };

    [[nodiscard]] Nodes nodes() const
    {
        const QMutexLocker locker(&mutex);
        return counted;
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        QSGNode *root = DrawableText::updatePaintNode(oldNode, data);
        QSet<const QSGNode *> children;
        for (const QSGNode *node = root->firstChild(); node; node = node->nextSibling())
            children.insert(node);
        const QMutexLocker locker(&mutex);
        ++counted.frames;
        counted.all = children.size();
        counted.kept = QSet<const QSGNode *>(children).intersect(seen).size();
        seen = children;
        return root;
    }

private:
    mutable QMutex mutex;
    Nodes counted;
    QSet<const QSGNode *> seen;
};

/// Some sixty lines: a long paragraph, an empty one and short ones, with emoji and a right-to-left word.
QString longText()
{
    QString text;
    for (int i = 0; i < 60; ++i)
        text += QStringLiteral("word%1 \u4f60\u597d \U0001F600 \u0627\u0644\u0639 ").arg(i);
    text += QStringLiteral("\n\n");
    for (int i = 0; i < 20; ++i)
        text += QStringLiteral("line %1 \U0001F389\n").arg(i);
    return text;
}

} // namespace

class tst_SelectionRepaint : public QObject
{
    Q_OBJECT

    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<NodeCounter> item;

    std::unique_ptr<NodeCounter> makeItem(double x) const
    {
        auto result = std::make_unique<NodeCounter>();
        result->setParentItem(window->contentItem());
        result->setPosition({x, 10});
        result->setMouseEnabled(true);
        result->setSelectByMouse(true);
        result->setSelectionColor(Qt::darkGreen);
        result->setMaximumLineCount(1000); // laid out at once
        result->setText(longText());
        result->setMaxWidth(400);
        return result;
    }

    /// What a new item with the same text and selection looks like. The item itself must stay where it is, or
    /// it would lose the mouse.
    QImage freshPicture()
    {
        const std::unique_ptr<NodeCounter> twin = makeItem(430);
        twin->setText(item->text());
        twin->setColor(item->color());
        twin->setSelectedTextColor(item->selectedTextColor());
        auto *state = const_cast<DrawableTextPrivate *>(twin->state());
        state->selectionRanges = item->state()->selectionRanges;
        state->selectionRects = item->state()->selectionRects;
        return window->picture(twin.get());
    }

private Q_SLOTS:
    void init()
    {
        window = std::make_unique<ItemWindow>(QSize(850, 900));
        QVERIFY(window->open());
        item = makeItem(10);
    }

    void cleanup()
    {
        item.reset();
        window.reset();
    }

    void everyStepOfADragLooksLikeAFreshPaint()
    {
        const QVector<QPointF> ways{{200, 40}, {210, 40}, {30, 100},  {390, 300}, {100, 330},
                                    {20, 500}, {40, 700}, {60, 620},  {25, 90},   {120, 12},
                                    {300, 4},  {40, 200}, {100, 201}, {30, 560}};
        Pointer pointer(item.get());
        (void)window->picture();
        pointer.press({120, 60});
        for (const QPointF &point : ways) {
            pointer.move(point);
            const QImage stepped = window->picture(item.get());
            const QImage fresh = freshPicture();
            QVERIFY(item->state()->selectionRects.size() > 0);
            QCOMPARE(pixels::pictureDifference(stepped, fresh, nearlySame), QString());
        }
        pointer.release({30, 560});
    }

    // Lines that end in a glyph: a selection that begins or ends there changes what is drawn of that line
    // alone.
    void everyEndOfALineLooksLikeAFreshPaint()
    {
        item->setText(QString(200, QChar(0x4e2d)));
        const double lineHeight = item->state()->layouts.constFirst()->lineAt(0).height();
        const double lastCharacter = item->state()->layouts.constFirst()->lineAt(0).naturalTextWidth() - 2;
        const auto pointOn = [lineHeight](int line, double x) {
            return QPointF(x, (line + 0.5) * lineHeight);
        };
        QVERIFY(item->state()->layouts.constFirst()->lineCount() > 6);
        (void)window->picture();
        Pointer pointer(item.get());
        for (int line = 0; line < 6; ++line) {
            // From before the last character down to the next line, and back within both lines.
            pointer.press(pointOn(line, lastCharacter - 8));
            for (const QPointF &point : {pointOn(line + 1, 40), pointOn(line + 1, 100), pointOn(line, 100),
                                         pointOn(line, 160), pointOn(line, lastCharacter)}) {
                pointer.move(point);
                const QImage stepped = window->picture(item.get());
                QCOMPARE(pixels::pictureDifference(stepped, freshPicture(), nearlySame), QString());
            }
            pointer.release(pointOn(line, lastCharacter));
            item->deselect();
            (void)window->picture();
        }
    }

    void deselectLooksLikeAFreshPaint()
    {
        const QImage before = window->picture(item.get());
        item->selectAll();
        const QImage selected = window->picture(item.get());
        QVERIFY(pixels::pictureDifference(selected, before, nearlySame) != QString());
        item->deselect();
        QCOMPARE(pixels::pictureDifference(window->picture(item.get()), before, nearlySame), QString());
    }

    void changesOfTheTextAreNotMistakenForASelection()
    {
        item->selectAll();
        (void)window->picture();
        // Each of these goes with a selection that stays as it was.
        item->setLinkColor(Qt::red);
        item->setColor(Qt::darkRed);
        const QImage recoloured = window->picture(item.get());
        QCOMPARE(pixels::pictureDifference(recoloured, freshPicture(), nearlySame), QString());
        item->setText(QStringLiteral("one"));
        (void)window->picture();
        item->setText(QStringLiteral("two"));
        const QImage two = window->picture(item.get());
        QCOMPARE(pixels::pictureDifference(two, freshPicture(), nearlySame), QString());
    }

    void colourOfSelectedTextShowsWithTheNextFrame()
    {
        item->selectAll();
        const QImage recoloured = window->picture(item.get());
        item->setSelectedTextColor(Qt::yellow);
        item->update();
        const QImage yellow = window->picture(item.get());
        QVERIFY(pixels::pictureDifference(yellow, recoloured, nearlySame) != QString());
        QCOMPARE(pixels::pictureDifference(yellow, freshPicture(), nearlySame), QString());
    }

    void aStepKeepsTheNodesOfUntouchedLines()
    {
        Pointer pointer(item.get());
        (void)window->picture();
        pointer.press({120, 60});
        pointer.move({60, 300});
        (void)window->picture();
        const int frames = item->nodes().frames;
        pointer.move({80, 300});
        (void)window->picture();
        const NodeCounter::Nodes nodes = item->nodes();
        QVERIFY(nodes.frames > frames);
        QVERIFY2(nodes.kept * 4 > nodes.all * 3,
                 qPrintable(QStringLiteral("%1 of %2 kept").arg(nodes.kept).arg(nodes.all)));
        pointer.release({80, 300});
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    tst_SelectionRepaint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_selectionrepaint.moc"
