// What the module carries in its resources: the glyphs of the window buttons, the checker behind pictures.

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QtEndian>
#include <QtTest>

namespace {

const QString fontPath = QStringLiteral(":/qml/image/iconfont.ttf");
const QString picturePath = QStringLiteral(":/qml/image/transparent.png");
const QString family = QStringLiteral("window-buttons");
constexpr ushort glyphs[] = {0xE61A, 0xE628, 0xE8A7, 0xE93C, 0xEBB0, 0xEBC1};

/// The glyph of `unit` in black on white as a button shows it at `pixelSize` pixels per em.
QImage drawn(ushort unit, int pixelSize)
{
    QImage image(pixelSize, pixelSize, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QFont font(family);
    font.setPixelSize(pixelSize);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(image.rect(), Qt::AlignCenter, QString(QChar(unit)));
    return image;
}

} // namespace

class TestResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const int id = QFontDatabase::addApplicationFont(fontPath);
        QCOMPARE(QFontDatabase::applicationFontFamilies(id), QStringList{family});
    }

    void fontHoldsExactlyTheGlyphsOfTheButtons()
    {
        const QRawFont font(fontPath, 16);
        QVERIFY(font.isValid());
        QCOMPARE(font.familyName(), family);
        QVector<ushort> supported;
        for (int unit = 1; unit < 0x10000; ++unit) {
            if (font.supportsCharacter(QChar(unit)))
                supported.append(ushort(unit));
        }
        QCOMPARE(supported, QVector<ushort>(std::begin(glyphs), std::end(glyphs)));
        const QByteArray maximums = font.fontTable("maxp");
        QCOMPARE(int(qFromBigEndian<quint16>(maximums.constData() + 4)),
                 int(std::size(glyphs)) + 1); // and notdef
    }

    void glyphsAreSquareAndCentred()
    {
        for (const int size : {10, 16, 20, 32}) {
            QFont font(family);
            font.setPixelSize(size);
            const QFontMetricsF metrics(font);
            const QRawFont raw = QRawFont::fromFont(font);
            QCOMPARE(metrics.height(), qreal(size));
            for (const ushort unit : glyphs) {
                QCOMPARE(metrics.horizontalAdvance(QChar(unit)), qreal(size));
                const quint32 glyph = raw.glyphIndexesForString(QString(QChar(unit))).first();
                const QRectF ink = raw.pathForGlyph(glyph).boundingRect();
                QVERIFY(!ink.isEmpty());
                QVERIFY(qAbs(ink.center().x() - size / 2.0) < 0.01 * size);
                QVERIFY(qAbs(ink.center().y() + size / 2.0) <
                        0.04 * size); // a single line keeps to the pixels
            }
        }
    }

    void uprightStrokesAreSharpAtTheSizesOfTheButtons()
    {
        for (const int size : {16, 32}) {
            for (const ushort unit : {0xE61A, 0xE8A7, 0xEBB0, 0xEBC1}) {
                const QImage image = drawn(unit, size);
                int black = 0;
                for (int y = 0; y < size; ++y) {
                    for (int x = 0; x < size; ++x) {
                        const int gray = qGray(image.pixel(x, y));
                        QVERIFY2(gray < 8 || gray > 247, qPrintable(QString::number(unit, 16)));
                        black += gray < 8;
                    }
                }
                QVERIFY(black >= size * 10 / 16);
            }
        }
    }

    void glyphsDiffer()
    {
        for (const ushort one : glyphs) {
            for (const ushort other : glyphs)
                QCOMPARE(drawn(one, 32) == drawn(other, 32), one == other);
        }
    }

    void pictureIsACheckerThatTiles()
    {
        const QImage picture(picturePath);
        QCOMPARE(picture.size(), QSize(16, 16));
        QVERIFY(!picture.hasAlphaChannel());
        const QRgb light = picture.pixel(0, 0);
        const QRgb dark = picture.pixel(8, 0);
        QVERIFY(qGray(light) > qGray(dark));
        QVERIFY(qGray(dark) > 192);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x)
                QCOMPARE(picture.pixel(x, y), (x < 8) == (y < 8) ? light : dark);
        }
    }
};

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
