// Placeholders are blank and as wide as they should be, and the text around them looks as without them.

#include <emoji/placeholderfont.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <QtTest>

#include <thread>
#include <vector>

namespace {

constexpr QChar emojiPlaceholder(0xEEEE);
constexpr QChar tabPlaceholder(0xEEEF);

struct LineSize
{
    qreal width = 0;
    qreal ascent = 0;
    qreal descent = 0;
    qreal height = 0;

    bool operator==(const LineSize &other) const
    {
        return width == other.width && ascent == other.ascent && descent == other.descent &&
               height == other.height;
    }
};

/// What QCOMPARE prints when two of them differ.
char *toString(const LineSize &size)
{
    const QString text = QStringLiteral("%1 wide, %2 + %3 = %4 high");
    return QTest::toString(text.arg(size.width).arg(size.ascent).arg(size.descent).arg(size.height));
}

LineSize layOut(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    layout.endLayout();
    // Not naturalTextWidth, which counts how far the last glyph reaches beyond its advance.
    return {line.cursorToX(text.size()), line.ascent(), line.descent(), line.height()};
}

bool hasInk(const QString &text, const QFont &font)
{
    QImage image(400, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(QPointF(10, 60), text);
    painter.end();
    QImage empty = image;
    empty.fill(Qt::transparent);
    return image != empty;
}

QFont fontOf(const QString &family, int pixelSize)
{
    QFont font(family);
    font.setPixelSize(pixelSize);
    return font;
}

} // namespace

class TestPlaceholderFont : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { emoji::registerPlaceholderFont(); }

    void registeringAgainAddsNothing()
    {
        QSignalSpy changes(qGuiApp, &QGuiApplication::fontDatabaseChanged);
        emoji::registerPlaceholderFont();
        QCOMPARE(changes.count(), 0);
        QVERIFY(QFontDatabase().families().contains(emoji::placeholderFamily()));
    }

    void fontHoldsTheTwoPlaceholdersAlone()
    {
        const QRawFont font = QRawFont::fromFont(fontOf(emoji::placeholderFamily(), 16));
        QCOMPARE(font.familyName(), emoji::placeholderFamily());
        for (int unit = 1; unit < 0x10000; ++unit) {
            const QChar character(unit);
            QCOMPARE(font.supportsCharacter(character),
                     character == emojiPlaceholder || character == tabPlaceholder);
        }
    }

    void placeholdersAreBlankAndTextIsAsBefore_data()
    {
        QTest::addColumn<QFont>("font");
        for (const char *family :
             {"DejaVu Sans", "DejaVu Serif", "Noto Sans", "Noto Sans CJK SC", "Noto Sans Mono", "Sans Serif",
              "Sans", "Monospace", "Microsoft YaHei", "No Such Family", "", "No Such Family, Noto Serif"}) {
            for (const int size : {12, 16, 20, 40})
                QTest::addRow("%s %d", family, size) << fontOf(QString::fromLatin1(family), size);
        }
        QFont listed = fontOf(QStringLiteral("DejaVu Sans"), 16);
        listed.setFamilies({QStringLiteral("No Such Family"), QStringLiteral("Noto Serif")});
        QTest::newRow("with a list of families") << listed;
        QFont bold = fontOf(QStringLiteral("Sans Serif"), 16);
        bold.setBold(true);
        QTest::newRow("bold") << bold;
        QFont italic = fontOf(QStringLiteral("DejaVu Serif"), 16);
        italic.setItalic(true);
        QTest::newRow("italic") << italic;
    }

    void placeholdersAreBlankAndTextIsAsBefore()
    {
        QFETCH(QFont, font);
        const QFont combined = emoji::withPlaceholders(font);
        const qreal size = font.pixelSize();

        const QFontMetricsF metrics(combined);
        QCOMPARE(metrics.horizontalAdvance(emojiPlaceholder), 1.25 * size);
        QCOMPARE(metrics.horizontalAdvance(tabPlaceholder), 2 * size);
        const QString placeholders = QString(emojiPlaceholder) + tabPlaceholder + emojiPlaceholder;
        QCOMPARE(layOut(placeholders, combined).width, 4.5 * size);
        QVERIFY(!hasInk(placeholders, combined));
        QVERIFY(hasInk(QStringLiteral("X"), combined)); // the check can see ink

        const QFontMetricsF plain(font);
        QCOMPARE(QFontInfo(combined).family(), QFontInfo(font).family());
        QCOMPARE(metrics.height(), plain.height());
        QCOMPARE(metrics.ascent(), plain.ascent());
        QCOMPARE(metrics.leading(), plain.leading());
        QCOMPARE(metrics.xHeight(), plain.xHeight());
        // Qt resolves a family that is not installed anew for each script, and takes the line's height from
        // what it finds. With the resolved family named, that is the least height for all scripts.
        const bool installed = QFontInfo(font).family() == font.family() || !font.families().isEmpty();
        const auto expected = [&](const QString &text) {
            LineSize size = layOut(text, font);
            if (!installed) {
                size.ascent = qMax(size.ascent, plain.ascent());
                size.descent = qMax(size.descent, plain.descent());
                size.height = size.ascent + size.descent;
            }
            return size;
        };
        const QString latin = QStringLiteral("X");
        const QString chinese = QString::fromUtf8("中文测试");
        const QString arabic = QString::fromUtf8("مرحبا");
        for (const QString &text : {latin, chinese, arabic, latin + chinese + arabic})
            QCOMPARE(layOut(text, combined), expected(text));

        // A placeholder in a line adds its width and nothing to the height, at either end.
        for (const QString &text : {latin, chinese}) {
            LineSize longer = expected(text);
            longer.width += 1.25 * size;
            QCOMPARE(layOut(text + emojiPlaceholder, combined), longer);
            QCOMPARE(layOut(emojiPlaceholder + text, combined), longer);
        }
    }

    void everythingElseOfTheFontStays()
    {
        QFont font(QStringLiteral("DejaVu Sans"), 11, QFont::DemiBold, true);
        font.setUnderline(true);
        font.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
        const QFont combined = emoji::withPlaceholders(font);
        QCOMPARE(combined.family(), font.family());
        QCOMPARE(combined.pointSize(), font.pointSize());
        QCOMPARE(combined.weight(), font.weight());
        QCOMPARE(combined.italic(), font.italic());
        QCOMPARE(combined.underline(), font.underline());
        QCOMPARE(combined.letterSpacing(), font.letterSpacing());
        QCOMPARE(emoji::withPlaceholders(combined), combined);
    }

    void namesTheWantedFamiliesThenTheResolvedOneThenItself()
    {
        QFont font = fontOf(QStringLiteral("No Such Family, 'Nor This'"), 16);
        font.setFamilies({QStringLiteral("Neither This")});
        const QStringList expected{QStringLiteral("Neither This"), QStringLiteral("No Such Family"),
                                   QStringLiteral("Nor This"), QFontInfo(font).family(),
                                   emoji::placeholderFamily()};
        QCOMPARE(emoji::withPlaceholders(font).families(), expected);
        QCOMPARE(emoji::withPlaceholders(fontOf(QStringLiteral("DejaVu Sans"), 16)).families(),
                 (QStringList{QStringLiteral("DejaVu Sans"), emoji::placeholderFamily()}));
    }

    void worksOnManyThreadsAtOnce()
    {
        const std::vector<QString> families{QStringLiteral("DejaVu Sans"), QStringLiteral("Sans Serif"),
                                            QStringLiteral("Noto Serif"),
                                            QStringLiteral("Thread Only Family")};
        std::vector<int> failures(8, 0);
        std::vector<std::thread> threads;
        for (std::size_t number = 0; number < failures.size(); ++number)
            threads.emplace_back([&families, &failure = failures[number]] {
                for (int round = 0; round < 100; ++round) {
                    emoji::registerPlaceholderFont();
                    const QFont font =
                        emoji::withPlaceholders(fontOf(families[std::size_t(round) % families.size()], 16));
                    if (QFontMetricsF(font).horizontalAdvance(emojiPlaceholder) != 20)
                        ++failure;
                }
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(failures, std::vector<int>(8, 0));
    }
};

QTEST_MAIN(TestPlaceholderFont)
#include "tst_placeholderfont.moc"
