// Spans from the list of blocks, whose positions count the whole raw text.

#include "analysissteps.h"
#include "text/charformats.h"

#include <QRandomGenerator>
#include <QtTest>
#include <limits>

using namespace textengine;

namespace {

/// Marked stretches of the list, one paragraph at a time, with nothing clever.
QVector<Spans> spansOfList(const QStringList &paragraphs, const QString &text, Qt::TextElideMode elide,
                           const QString &elideText, UserTextBlocks list)
{
    QVector<Spans> result(paragraphs.size());
    std::stable_sort(list.begin(), list.end(),
                     [](const UserTextBlock &a, const UserTextBlock &b) { return a.start < b.start; });
    if (elide != Qt::ElideNone && elide != Qt::ElideRight)
        return result;
    int base = 0;
    int current = 0;
    for (int index = 0; index < paragraphs.size(); ++index) {
        const QString &paragraph = paragraphs.at(index);
        int end = base + paragraph.size() + 1;
        if (index == paragraphs.size() - 1) {
            end -= 1;
            if (elide == Qt::ElideRight && paragraph.endsWith(elideText) && !text.endsWith(elideText))
                end -= 1;
        }
        while (current < list.size() && list.at(current).start < end) {
            const UserTextBlock &entry = list.at(current);
            const int rel = entry.start - base;
            const int from = rel - excessByDefinition(paragraph.mid(0, rel + 1));
            const int to = rel + entry.length - 1 - excessByDefinition(paragraph.mid(0, rel + entry.length));
            const QMap<int, int> kinds = {{1, 4}, {2, 128}, {3, 8}, {4, 1024}, {5, 512}, {6, 256}};
            int kind = kinds.value(entry.type, 64);
            if (kind == 8 && entry.data.toInt() <= 0)
                kind = 2048;
            if (to > end - 1)
                break;
            result[index].append(span(from, to, kind, entry.data));
            ++current;
        }
        base = end;
    }
    return result;
}

} // namespace

class TestBlockList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listMarksTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVector<Spans>>("spans");
        QTest::addColumn<QVariantList>("list"); // start, length, type, data

        const QString x = QStringLiteral("x");
        QTest::newRow("kinds") << QStringLiteral("abcdefg")
                               << QVector<Spans>({{span(0, 0, 64, x), span(1, 1, 4, x), span(2, 2, 128, x),
                                                   span(3, 3, 1024, x), span(4, 4, 512, x),
                                                   span(5, 5, 256, x), span(6, 6, 64, x)}})
                               << QVariantList({0, 1, 0, x, 1, 1, 1, x, 2, 1, 2, x, 3, 1,
                                                4, x, 4, 1, 5, x, 5, 1, 6, x, 6, 1, 7, x});
        QTest::newRow("mention of somebody")
            << QStringLiteral("@Ann") << QVector<Spans>({{span(0, 3, 8, 7)}}) << QVariantList({0, 4, 3, 7});
        QTest::newRow("mention of nobody")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, 0)}})
            << QVariantList({0, 4, 3, 0});
        QTest::newRow("mention with a negative id")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, -1)}})
            << QVariantList({0, 4, 3, -1});
        QTest::newRow("mention with a name for an id")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, x)}})
            << QVariantList({0, 4, 3, x});
        QTest::newRow("only mentions ask who")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 4, 0)}}) << QVariantList({0, 4, 1, 0});
        QTest::newRow("emoji in front") << grinning() + QStringLiteral("abc")
                                        << QVector<Spans>({{span(1, 3, 4, x)}}) << QVariantList({2, 3, 1, x});
        QTest::newRow("emoji inside") << QStringLiteral("a") + family() + QStringLiteral("b")
                                      << QVector<Spans>({{span(0, 2, 4, x)}}) << QVariantList({0, 13, 1, x});
        QTest::newRow("sorted by start")
            << QStringLiteral("abcd")
            << QVector<Spans>({{span(0, 0, 4, 1), span(2, 2, 4, 2), span(3, 3, 4, 3)}})
            << QVariantList({3, 1, 1, 3, 0, 1, 1, 1, 2, 1, 1, 2});
        QTest::newRow("equal starts keep their order")
            << QStringLiteral("abcd")
            << QVector<Spans>({{span(1, 2, 4, 1), span(1, 1, 4, 2), span(1, 3, 4, 3)}})
            << QVariantList({1, 2, 1, 1, 1, 1, 1, 2, 1, 3, 1, 3});
        QTest::newRow("overlapping ones all stay")
            << QStringLiteral("abcdef") << QVector<Spans>({{span(0, 3, 4, 1), span(2, 5, 64, 2)}})
            << QVariantList({0, 4, 1, 1, 2, 4, 0, 2});
        QTest::newRow("second paragraph")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{}, {span(0, 1, 4, x)}})
            << QVariantList({3, 2, 1, x});
        QTest::newRow("up to the line end")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{span(0, 1, 4, x)}, {}})
            << QVariantList({0, 2, 1, x});
        // `to` = 2 is the line end itself, which the paragraph's end still covers.
        QTest::newRow("the line end included")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{span(0, 2, 4, x)}, {}})
            << QVariantList({0, 3, 1, x});
        // Does not fit the first paragraph, and is then measured from the second, with a negative start.
        QTest::newRow("over the line end")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{}, {span(-2, 1, 4, x)}})
            << QVariantList({1, 4, 1, x});
        QTest::newRow("past the end")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({3, 1, 1, x});
        QTest::newRow("ends past the end")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({1, 3, 1, x});
        QTest::newRow("one that does not fit bars those behind it")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({0, 9, 1, x, 1, 1, 1, x});
        // A paragraph's positions against an end in the whole text: too long for its paragraph and let
        // through.
        QTest::newRow("longer than a later paragraph")
            << QStringLiteral("abcdef\ngh") << QVector<Spans>({{}, {span(0, 8, 4, x)}})
            << QVariantList({7, 9, 1, x});
        QTest::newRow("negative start")
            << QStringLiteral("abc") << QVector<Spans>({{span(-2, 0, 4, x)}}) << QVariantList({-2, 3, 1, x});
        QTest::newRow("no length") << QStringLiteral("abc") << QVector<Spans>({{span(1, 0, 4, x)}})
                                   << QVariantList({1, 0, 1, x});
        QTest::newRow("negative length")
            << QStringLiteral("abc") << QVector<Spans>({{span(1, -3, 4, x)}}) << QVariantList({1, -3, 1, x});
        // The first begins where the emoji does, the second in its middle: both mean its one position.
        QTest::newRow("inside an emoji") << QStringLiteral("a") + grinning() + QStringLiteral("b")
                                         << QVector<Spans>({{span(1, 1, 4, x), span(1, 2, 4, x)}})
                                         << QVariantList({1, 2, 1, x, 2, 2, 1, x});
    }
    void listMarksTheText()
    {
        QFETCH(QString, text);
        QFETCH(QVector<Spans>, spans);
        QFETCH(QVariantList, list);
        DrawableTextPrivate state;
        for (int index = 0; index + 3 < list.size(); index += 4) {
            state.userBlocks.append(block(list.at(index).toInt(), list.at(index + 1).toInt(),
                                          list.at(index + 2).toInt(), list.at(index + 3)));
        }
        prepare(state, text);
        drawabletext::splitParagraphs(state);
        drawabletext::applyUserBlocks(state);
        QCOMPARE(state.spans.size(), spans.size());
        for (int index = 0; index < spans.size(); ++index)
            COMPARE_SPANS(state.spans.at(index), spans.at(index));
    }

    void listIsSortedInPlaceWhateverTheElision()
    {
        for (const Qt::TextElideMode mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone}) {
            DrawableTextPrivate state;
            state.elide = mode;
            state.elidedText = QStringLiteral("abcd");
            state.userBlocks = {block(2, 1, 1, 1), block(0, 1, 1, 2)};
            analyse(state, QStringLiteral("abcd"));
            QVERIFY(state.userBlocks == UserTextBlocks({block(0, 1, 1, 2), block(2, 1, 1, 1)}));
            const bool gives = mode == Qt::ElideNone || mode == Qt::ElideRight;
            QCOMPARE(state.spans.at(0).size(), gives ? 2 : 0);
        }
    }

    void ellipsisCountsForNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("elidedText");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("fits");
        const QString cut = QStringLiteral("abc\u2026");
        QTest::newRow("cut") << QStringLiteral("abcdef") << cut << int(Qt::ElideRight) << false;
        QTest::newRow("the text's own ellipsis") << cut << cut << int(Qt::ElideRight) << true;
        QTest::newRow("no elision") << cut << QString() << int(Qt::ElideNone) << true;
        QTest::newRow("whole") << QStringLiteral("abcd") << QStringLiteral("abcd") << int(Qt::ElideRight)
                               << true;
    }
    void ellipsisCountsForNothing()
    {
        QFETCH(QString, text);
        QFETCH(QString, elidedText);
        QFETCH(int, mode);
        QFETCH(bool, fits);
        DrawableTextPrivate state;
        state.elide = Qt::TextElideMode(mode);
        state.elidedText = elidedText;
        state.userBlocks = {block(0, 3, 1, 1),
                            block(2, 2, 1, 2)}; // the second one reaches the last character
        analyse(state, text);
        QCOMPARE(state.spans.at(0).size(), fits ? 2 : 1);
    }

    void anyListGivesWhatTheRulesSay_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 0; seed < 12; ++seed)
            QTest::addRow("seed %d", seed) << seed;
    }
    void anyListGivesWhatTheRulesSay()
    {
        QFETCH(int, seed);
        QRandomGenerator random(seed + 1);
        const QStringList pieces = {QStringLiteral("a"),
                                    QStringLiteral("b"),
                                    QStringLiteral(" "),
                                    QStringLiteral("\n"),
                                    grinning(),
                                    thumbsUpMediumTone(),
                                    family(),
                                    QStringLiteral("\u4e2d"),
                                    QStringLiteral("1"),
                                    QStringLiteral("\u2026"),
                                    QString(QChar(0xD83D)),
                                    QString(QChar(0xFE0F))};
        const QVector<QVariant> values = {0, 7, -1, QStringLiteral("x"), QVariant(), QStringLiteral("12")};
        int marked = 0;
        for (int round = 0; round < 150; ++round) {
            QString text;
            for (int count = random.bounded(14); count > 0; --count)
                text += pieces.at(random.bounded(pieces.size()));
            UserTextBlocks list;
            for (int count = random.bounded(7); count > 0; --count) {
                list.append(block(random.bounded(-3, text.size() + 4), random.bounded(-1, 7),
                                  random.bounded(-1, 9), values.at(random.bounded(values.size()))));
            }
            DrawableTextPrivate state;
            state.elide = random.bounded(3) == 0 ? Qt::ElideRight : Qt::ElideNone;
            state.elidedText = text.left(random.bounded(text.size() + 1)) + QChar(0x2026);
            state.userBlocks = list;
            prepare(state, text);
            drawabletext::splitParagraphs(state);
            const QStringList paragraphs = state.paragraphs;
            drawabletext::applyUserBlocks(state);
            const QVector<Spans> expected = spansOfList(paragraphs, text, state.elide, state.elideText, list);
            QCOMPARE(state.spans.size(), expected.size());
            for (int index = 0; index < expected.size(); ++index) {
                COMPARE_SPANS(state.spans.at(index), expected.at(index));
                marked += expected.at(index).size();
            }
        }
        QVERIFY(marked > 50); // or the comparison would say nothing
    }

    void positionsThatNoTextHasMarkNothing_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("length");
        const int most = std::numeric_limits<int>::max();
        QTest::newRow("huge start") << most << 1;
        QTest::newRow("huge start and length") << most << most;
        QTest::newRow("huge length") << 0 << most;
        QTest::newRow("huge length behind the first character") << 1 << most;
        QTest::newRow("huge length in the second paragraph") << 6 << most;
    }
    void positionsThatNoTextHasMarkNothing()
    {
        QFETCH(int, start);
        QFETCH(int, length);
        DrawableTextPrivate state;
        state.userBlocks = {block(start, length, 1, 1)};
        analyse(state, QStringLiteral("a") + grinning() + QStringLiteral("b\ncd"));
        for (const Spans &spans : qAsConst(state.spans))
            QVERIFY(ofKind(spans, SpanLink).isEmpty());
    }

    void negativeExtremesDoNoHarm()
    {
        const int least = std::numeric_limits<int>::min();
        for (const int start : {least, least + 1, -1}) {
            for (const int length : {least, least + 1, -1, 0, 1, std::numeric_limits<int>::max()}) {
                DrawableTextPrivate state;
                state.userBlocks = {block(start, length, 3, 1)};
                analyse(state, QStringLiteral("a") + grinning() + QStringLiteral("b\ncd"));
                drawabletext::buildParagraphFormats(state);
                QCOMPARE(state.paragraphs.size(), 2);
            }
        }
    }
};

QTEST_MAIN(TestBlockList)
#include "tst_blocklist.moc"
