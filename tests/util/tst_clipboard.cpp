// The clipboard for scripts, within one process.

#include "util/clipboard.h"

#include <QClipboard>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QUrl>
#include <QtTest>

namespace {

[[nodiscard]] QClipboard *system()
{
    return QGuiApplication::clipboard();
}

[[nodiscard]] QImage picture(int width, int height, const QColor &color = Qt::darkCyan)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

class TestClipboard : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir temporary;
    Clipboard clipboard;

    [[nodiscard]] QString save(const QString &name, const QImage &image) const
    {
        const QString path = temporary.path() + QLatin1Char('/') + name;
        return image.save(path, "PNG") ? path : QString();
    }
    /// A file of this size that begins as a picture.
    [[nodiscard]] QString pictureOfSize(const QString &name, qint64 size) const
    {
        const QString path = save(name, picture(10, 10));
        return QFile::resize(path, size) ? path : QString();
    }
    static void setRichText()
    {
        auto *data = new QMimeData;
        data->setText(QStringLiteral("plain"));
        data->setHtml(QStringLiteral("<b>rich</b>"));
        system()->setMimeData(data);
    }

private Q_SLOTS:
    void init() { system()->clear(); }

    void textGoesInAndComesOut()
    {
        clipboard.setText(QStringLiteral("a\nb"));
        QCOMPARE(system()->text(), QStringLiteral("a\nb"));
        QCOMPARE(clipboard.text(), QStringLiteral("a\nb"));
        QCOMPARE(clipboard.text(QStringLiteral("plain")), QStringLiteral("a\nb"));
        QCOMPARE(clipboard.text(QStringLiteral("html")), QString());
        clipboard.clear();
        QCOMPARE(clipboard.text(), QString());
    }

    void subtypesAreToldApart()
    {
        setRichText();
        QCOMPARE(clipboard.text(), QStringLiteral("plain"));
        QCOMPARE(clipboard.text(QStringLiteral("html")), QStringLiteral("<b>rich</b>"));
    }

    void picturesGoInAndComeOut()
    {
        const QImage image = picture(20, 10);
        clipboard.setImage(image);
        QCOMPARE(clipboard.image(), image);
        QCOMPARE(clipboard.pixmap().toImage().convertToFormat(QImage::Format_RGB32), image);
        clipboard.setPixmap(QPixmap::fromImage(picture(3, 4)));
        QCOMPARE(clipboard.image().size(), QSize(3, 4));
        clipboard.setImage(save(QStringLiteral("a.png"), picture(5, 6)));
        QCOMPARE(clipboard.image().size(), QSize(5, 6));
        clipboard.clear();
        QVERIFY(clipboard.image().isNull());
        QVERIFY(clipboard.pixmap().isNull());
    }

    void ownershipIsThatOfTheSystem()
    {
        clipboard.setText(QStringLiteral("a"));
        QCOMPARE(clipboard.ownsClipboard(), system()->ownsClipboard());
        QCOMPARE(clipboard.ownsSelection(), system()->ownsClipboard());
        QCOMPARE(clipboard.ownsFindBuffer(), system()->ownsFindBuffer());
    }

    void dataOfAnyTypeIsReadAsText()
    {
        auto *data = new QMimeData;
        data->setData(QStringLiteral("ostrel/x"), "\xE4\xBD\xA0");
        system()->setMimeData(data);
        QCOMPARE(clipboard.mimeDataInfo(QStringLiteral("ostrel/x")), QString::fromUtf8("\xE4\xBD\xA0"));
        QCOMPARE(clipboard.mimeDataInfo(QStringLiteral("ostrel/y")), QString());
    }

    void htmlMeansPlainAndEverythingElseHtml()
    {
        setRichText();
        QCOMPARE(clipboard.mimeData(QStringLiteral("html")), QStringLiteral("plain"));
        QCOMPARE(clipboard.mimeData(QStringLiteral("text")), QStringLiteral("<b>rich</b>"));
        QCOMPARE(clipboard.mimeData(QStringLiteral("HTML")), QStringLiteral("<b>rich</b>"));
        QCOMPARE(clipboard.mimeData(QString()), QStringLiteral("<b>rich</b>"));
    }

    void plainTextIsTheTwinOfRichText()
    {
        clipboard.setText(QStringLiteral("only plain"));
        QCOMPARE(clipboard.filterTextPlain(), QString());
        QCOMPARE(clipboard.filterTextPlain(true), QStringLiteral("only plain"));
        setRichText();
        QCOMPARE(clipboard.filterTextPlain(), QStringLiteral("plain"));
        QCOMPARE(clipboard.filterTextPlain(true), QStringLiteral("plain"));
        clipboard.clear();
        QCOMPARE(clipboard.filterTextPlain(true), QString());
    }

    void htmlIsFiltered()
    {
        QCOMPARE(clipboard.filterHtml(QStringLiteral("<p>a</p><br/>b")), QStringLiteral("a<br/>b"));
    }

    void aMapReplacesWhatWasThere()
    {
        clipboard.setText(QStringLiteral("old"));
        const QString html = QStringLiteral("<p>a <b>b</b> \u4f60</p>");
        clipboard.setMimeData({{QStringLiteral("text/html"), html},
                               {QStringLiteral("ostrel/aite"), QByteArray("bytes")},
                               {QStringLiteral("text/plain"), QStringLiteral("plain")}});
        QTextDocument document;
        document.setHtml(html);
        const QMimeData *data = system()->mimeData();
        QCOMPARE(QString::fromUtf8(data->data(QStringLiteral("text/html"))), document.toHtml("utf-8"));
        QCOMPARE(data->data(QStringLiteral("ostrel/aite")), QByteArray("bytes"));
        QCOMPARE(data->text(), QStringLiteral("plain"));
        QVERIFY(!data->hasImage());
        clipboard.setMimeData({});
        QVERIFY(system()->mimeData()->formats().isEmpty());
    }

    void aLargePictureIsShrunkForTheClipboard_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("put");
        QTest::newRow("landscape") << QSize(2000, 1000) << QSize(1280, 640);
        QTest::newRow("wide") << QSize(1281, 800) << QSize(1152, 720);
        QTest::newRow("wide enough") << QSize(1280, 1000) << QSize(1280, 1000);
        QTest::newRow("square") << QSize(1280, 1280) << QSize(1280, 1280);
        QTest::newRow("large square") << QSize(1281, 1281) << QSize(720, 720);
        QTest::newRow("portrait") << QSize(1000, 2000) << QSize(640, 1280);
        QTest::newRow("tall enough") << QSize(1000, 1280) << QSize(1000, 1280);
        QTest::newRow("small") << QSize(10, 20) << QSize(10, 20);
    }
    void aLargePictureIsShrunkForTheClipboard()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, put);
        const QString path = save(QStringLiteral("picture.txt"), picture(size.width(), size.height()));
        clipboard.setMimeData({{QStringLiteral("image"), path}});
        QCOMPARE(clipboard.image().size(), put);
        QVERIFY(!system()->mimeData()->formats().contains(QStringLiteral("image")));
    }

    void anUnreadablePictureIsNotPutThere()
    {
        clipboard.setMimeData({{QStringLiteral("image"), temporary.path() + QStringLiteral("/missing.png")}});
        QVERIFY(!system()->mimeData()->hasImage());
    }

    void aPictureHasAFileOfItsOwnName()
    {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
        QCOMPARE(clipboard.imagePath(), QString());
        clipboard.setImage(picture(20, 10));
        const QString url = clipboard.imagePath();
        const QString prefix = QStringLiteral("file:///") + folder + QStringLiteral("/clipboard");
        QVERIFY2(url.startsWith(prefix), qPrintable(url));
        QVERIFY(url.endsWith(QStringLiteral(".png")));
        const QString path = url.mid(8);
        QCOMPARE(QImage(path).convertToFormat(QImage::Format_RGB32), picture(20, 10));

        // Named by the SHA-1 of its pixels as a pixmap hands them out.
        const QImage pixels = clipboard.pixmap().toImage();
        const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(pixels.constBits()),
                                                   pixels.bytesPerLine() * pixels.height());
        QCOMPARE(url,
                 prefix +
                     QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex()) +
                     QStringLiteral(".png"));

        QCOMPARE(clipboard.imagePath(), url);
        clipboard.setImage(picture(20, 10));
        QCOMPARE(clipboard.imagePath(), url);
        clipboard.setImage(picture(20, 10, Qt::yellow));
        const QString other = clipboard.imagePath();
        QVERIFY(other != url);
        QVERIFY(QFile::remove(path));
        QVERIFY(QFile::remove(other.mid(8)));
    }

    void filesOnTheClipboardAreListed()
    {
        auto *data = new QMimeData;
        data->setUrls({QUrl(QStringLiteral("file:///home/a%20b.png")),
                       QUrl(QStringLiteral("https://server/x")), QUrl(QStringLiteral("file:///home/c.txt"))});
        data->setImageData(picture(3, 3));
        system()->setMimeData(data);
        QCOMPARE(clipboard.filterContent(),
                 QVariant(QStringList{QUrl(QStringLiteral("file:///home/a%20b.png")).toString(),
                                      QStringLiteral("file:///home/c.txt")}));
    }

    void aPictureOnTheClipboardIsListedAsItsFile()
    {
        auto *data = new QMimeData;
        data->setUrls({QUrl(QStringLiteral("https://server/x"))});
        data->setImageData(picture(7, 7, Qt::magenta));
        system()->setMimeData(data);
        const QStringList files = clipboard.filterContent().toStringList();
        QCOMPARE(files.size(), 1);
        QVERIFY(!files[0].contains(QStringLiteral("file:")));
        QCOMPARE(QImage(files[0]).size(), QSize(7, 7));
        QVERIFY(QFile::remove(files[0]));
    }

    void nothingOnTheClipboardIsAnEmptyList()
    {
        const QVariant files = clipboard.filterContent();
        QCOMPARE(files.userType(), int(QMetaType::QStringList));
        QVERIFY(files.toStringList().isEmpty());
    }

    void aFileIsCopiedWithItsPictureUnlessItIsTooLarge_data()
    {
        QTest::addColumn<qint64>("size");
        QTest::addColumn<bool>("hasPicture");
        QTest::newRow("20 MiB") << qint64(0x1400000) << true;
        QTest::newRow("one byte more") << qint64(0x1400001) << false;
        QTest::newRow("25 MiB") << qint64(25) * 1024 * 1024 << false;
    }
    void aFileIsCopiedWithItsPictureUnlessItIsTooLarge()
    {
        QFETCH(qint64, size);
        QFETCH(bool, hasPicture);
        const QString path = pictureOfSize(QStringLiteral("a b.png"), size);
        QVERIFY(!path.isEmpty());
        const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
        clipboard.copyImageToClipboard(url);
        const QMimeData *data = system()->mimeData();
        QCOMPARE(QString::fromUtf8(data->data(QStringLiteral("text/uri-list"))).trimmed(), url);
        QCOMPARE(data->hasImage(), hasPicture);
        if (!hasPicture)
            QCOMPARE(data->formats(), QStringList{QStringLiteral("text/uri-list")});
    }

    void aMissingFileLeavesTheClipboardAlone()
    {
        clipboard.setText(QStringLiteral("old"));
        QTest::ignoreMessage(QtDebugMsg, "file not exist:  \"/missing/a.png\"");
        clipboard.copyImageToClipboard(QStringLiteral("/missing/a.png"));
        QCOMPARE(clipboard.text(), QStringLiteral("old"));
    }

    void limitingTheTextLimitsNothing()
    {
        clipboard.setText(QStringLiteral("abcdef"));
        clipboard.limitedTextSize(3);
        QCOMPARE(clipboard.text(), QStringLiteral("abcdef"));
    }
};

QTEST_MAIN(TestClipboard)
#include "tst_clipboard.moc"
