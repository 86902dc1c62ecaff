// The type reference's examples through the module's import: each loads, is shown and goes away without a
// warning.

#include <QApplication>
#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

#include <messageguard.h>

#include <memory>

namespace {

QStringList exampleNames()
{
    QStringList names;
    const auto files =
        QDir(QStringLiteral(EXAMPLES_DIR)).entryInfoList({QStringLiteral("*.qml")}, QDir::Files);
    for (const QFileInfo &file : files)
        names.append(file.baseName());
    return names;
}

} // namespace

class TestExamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { guard = std::make_unique<MessageGuard>(); }
    void cleanup();

    void exampleRunsWithoutWarnings_data();
    void exampleRunsWithoutWarnings();
    void examplesNameTheirType_data();
    void examplesNameTheirType();

private:
    std::unique_ptr<MessageGuard> guard;
};

void TestExamples::cleanup()
{
    const QStringList unexpected = guard->unexpected();
    guard.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestExamples::exampleRunsWithoutWarnings_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = exampleNames();
    QVERIFY(!names.isEmpty());
    for (const QString &name : names) {
#ifndef COMPONENT_WEBSOCKET
        if (name == QLatin1String("WebSocket"))
            continue;
#endif
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestExamples::exampleRunsWithoutWarnings()
{
    QFETCH(QString, name);

    QQmlEngine engine;
    QQmlComponent component(
        &engine, QUrl::fromLocalFile(QStringLiteral(EXAMPLES_DIR "/") + name + QStringLiteral(".qml")));
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));

    if (auto *item = qobject_cast<QQuickItem *>(root.get())) {
        QQuickWindow window;
        window.resize(400, 300);
        item->setParentItem(window.contentItem());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // What is behind an icon in the tray or a hot key shows nothing.
        if (name != QLatin1String("SystemTrayIcon") && name != QLatin1String("QxtGlobalShortcut"))
            QVERIFY(item->width() > 0 && item->height() > 0);
        QVERIFY(!window.grabWindow().isNull());
        root.reset();
    } else if (auto *window = qobject_cast<QQuickWindow *>(root.get())) {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(!window->grabWindow().isNull());
        root.reset();
    }
    QCoreApplication::processEvents();
}

void TestExamples::examplesNameTheirType_data()
{
    exampleRunsWithoutWarnings_data();
}

void TestExamples::examplesNameTheirType()
{
    QFETCH(QString, name);

    QFile file(QStringLiteral(EXAMPLES_DIR "/") + name + QStringLiteral(".qml"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY(text.startsWith(QLatin1String("// ")));
    QVERIFY(text.contains(QLatin1String("import com.ostrel.im.component 1.0")));
    QVERIFY(text.contains(QRegularExpression(QStringLiteral("\\b%1( \\{|\\.)").arg(name))));
    QVERIFY2(text.count(QLatin1Char('\n')) < 60, "An example is short");
}

QTEST_MAIN(TestExamples)
#include "tst_examples.moc"
