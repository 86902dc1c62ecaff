// Runs the demo's tour and looks at the pictures that it leaves.

#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class Screenshots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyPageShowsSomething_data();
    void everyPageShowsSomething();
    void noPictureIsLeftThatNobodyLooksAt();

private:
    [[nodiscard]] static QStringList pages();

    QTemporaryDir folder;
};

namespace {

/// Colours of `picture`, counted up to `enough`.
int countColors(const QImage &picture, int enough)
{
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height() && colors.size() < enough; ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colors.insert(picture.pixel(x, y));
    }
    return colors.size();
}

} // namespace

QStringList Screenshots::pages()
{
    return QStringLiteral(
               "answer arabic attachments capture card-bottom card-bottomLeft card-left card-top chinese "
               "code contacts conversation counter direct emoji emoji-messages gallery gallery-end hover "
               "keyboard link long map map-zoomed maximised mentions menu name-card person picker previews "
               "question resize search selection sent settings tags tray wallpaper")
        .split(QLatin1Char(' '));
}

void Screenshots::initTestCase()
{
    QVERIFY(folder.isValid());
    QProcess chat;
    chat.start(QStringLiteral(CHAT_PROGRAM), {QStringLiteral("--screenshots"), folder.path()});
    QVERIFY(chat.waitForFinished(300000));
    const QByteArray errors = chat.readAllStandardError();
    QVERIFY2(chat.exitStatus() == QProcess::NormalExit && chat.exitCode() == 0, errors.constData());
    QVERIFY2(!errors.contains("qrc:"), errors.constData());
}

void Screenshots::everyPageShowsSomething_data()
{
    QTest::addColumn<QString>("page");
    const QStringList all = pages();
    for (const QString &page : all)
        QTest::newRow(qPrintable(page)) << page;
}

void Screenshots::everyPageShowsSomething()
{
    QFETCH(QString, page);
    const QImage picture(folder.filePath(page + QStringLiteral(".png")));
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() >= 800);
    QVERIFY(picture.height() >= 500);
    // Without the texts that the module paints, names, avatars and cards leave up to 2,700 colours here.
    // Forms hold few of such texts.
    const QStringList forms = {QStringLiteral("settings"), QStringLiteral("question"),
                               QStringLiteral("resize"), QStringLiteral("maximised")};
    const bool isForm = forms.contains(page);
    const int enough = isForm ? 300 : 4000;
    const int colors = countColors(picture.copy(424, 70, 672, 580), enough);
    QVERIFY2(colors >= enough, qPrintable(QString::number(colors)));
}

void Screenshots::noPictureIsLeftThatNobodyLooksAt()
{
    QStringList files = QDir(folder.path()).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    files.replaceInStrings(QStringLiteral(".png"), QString());
    files.sort();
    QCOMPARE(files, pages());
}

QTEST_GUILESS_MAIN(Screenshots)
#include "tst_screenshots.moc"
