// A client's process, as far as the first item: prints the microseconds from the engine's beginning until the
// item of the document in the first argument exists.

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTextStream>

#include <memory>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QByteArray document = application.arguments().value(1).toUtf8();

    QElapsedTimer timer;
    timer.start();
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_DIR));
    QQmlComponent component(&engine);
    component.setData(document, QUrl());
    const std::unique_ptr<QObject> item(component.create());
    const qint64 elapsed = timer.nsecsElapsed();

    if (!item) {
        QTextStream(stderr) << component.errorString() << '\n';
        return 1;
    }
    QTextStream(stdout) << elapsed / 1000 << '\n';
    return 0;
}
