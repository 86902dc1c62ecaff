// The toolbox as an object: what it declares, its screens and windows, its mutex, one instance per engine.

#include "util/imutil.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QMetaMethod>
#include <QOperatingSystemVersion>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScreen>
#include <QtTest>

#include <plugin/registration.h>

#include <atomic>
#include <thread>

namespace {

// Every method scripts may call, with the forms that default values add, then the signal.
const char *const methods[] = {
    "QString toLocalFile(QString)",
    "QString fromLocalFile(QString)",
    "qlonglong getFileSize(QString)",
    "qlonglong dirSize(QString)",
    "bool isDir(QString)",
    "QVariantMap getFileInfo(QString,bool)",
    "QVariantMap getFileInfo(QString)",
    "bool openFile(QString)",
    "bool openUrl(QString)",
    "void openPath(QString)",
    "bool openFileWithParam(QString,QStringList)",
    "bool removeLocalFolder(QUrl)",
    "bool fileExists(QUrl)",
    "QVariantMap containsFileType(QList<QUrl>)",
    "bool copyFile(QString,QString)",
    "bool deleteFile(QString)",
    "bool mkpath(QString)",
    "bool fileRename(QString,QString)",
    "QString readTextFile(QString)",
    "QString checkDownloadFolder(QString)",
    "bool existApp(QString)",
    "QVariantMap scaleImage(QString,QString)",
    "bool reduceImage(QString,QString,int,int)",
    "QVariantMap getImageInfo(QString)",
    "QSizeF imageSize(QString)",
    "bool isImageFormat(QString)",
    "QString imageSaveAsTmpWebp(QString)",
    "QString sha1Image(QImage,int)",
    "QString sha1Image(QImage)",
    "QString sha1UpgradeFile(QString,int)",
    "QString sha1UpgradeFile(QString)",
    "bool copyPhoto(QString,QString,QRect,QSize,QSize,double,bool,int)",
    "bool copyPhoto(QString,QString,QRect,QSize,QSize,double,bool)",
    "bool copyPhoto(QString,QString,QRect,QSize,QSize,double)",
    "bool copyPhoto(QString,QString,QRect,QSize,QSize)",
    "bool copyPhoto(QString,QString,QRect,QSize)",
    "void base64DataToImageCache(QString,QString)",
    "void dragItem(QString,QString)",
    "void dragItem(QString)",
    "QString createTmpId(int)",
    "QString createTmpId()",
    "void taskbarFlash(QWindow*)",
    "int compare(QString,QString)",
    "QByteArray fromBase64(QByteArray)",
    "QByteArray toBase64(QByteArray)",
    "QVariantMap screenRect(QWindow*)",
    "QPoint mousePostion()",
    "bool isContainsPoint(QRect,QPoint)",
    "QRect desktopGeometry()",
    "QSizeF variantToSize(QVariant)",
    "QVariantMap systemVersion()",
    "void lockThread()",
    "void unlockThread()",
    "void tcpingProxy(QString,ushort,QString)",
    "QString toFormatTime(qlonglong,QString)",
    "QString fromTime(qlonglong,bool)",
    "QString fromTime(qlonglong)",
    "QString secondsToString(int,QString)",
    "QString secondsToString(int)",
    "QString toFormatedTimeType(qlonglong)",
    "QString toFormatedDateTime(qlonglong)",
    "bool isToday(qlonglong)",
    "QString intToSizeStr(double)",
    "QStringList intsToSizeStrs(double,double)",
    "QColor colorByStr(QString,double)",
    "QColor colorByStr(QString)",
    "QColor colorById(int)",
    "QVariantMap colorToHSL(QColor)",
    "QColor setColorAlpha(QColor,double)",
    "QStringList bubleGradientColors(double,double,double,QColor,QColor)",
    "QString trimString(QString)",
    "void pingProxyResult(QString,QVariant)",
};

} // namespace

class TestImUtil : public QObject
{
    Q_OBJECT

private:
    ImUtil util;

private Q_SLOTS:
    void scriptsSeeExactlyTheseMethods()
    {
        QStringList expected;
        for (const char *method : methods)
            expected.append(QString::fromLatin1(method));
        QCOMPARE(expected.size(), 72);

        const QMetaObject &metaObject = ImUtil::staticMetaObject;
        QStringList declared;
        for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
            const QMetaMethod method = metaObject.method(i);
            const bool isSignal = method.name() == "pingProxyResult";
            QCOMPARE(method.methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
            QCOMPARE(method.access(), QMetaMethod::Public);
            declared.append(QString::fromLatin1(method.typeName()) + QLatin1Char(' ') +
                            QString::fromLatin1(method.methodSignature()));
        }
        declared.sort();
        expected.sort();
        QCOMPARE(declared.join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
        QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
        QCOMPARE(metaObject.enumeratorCount(), metaObject.enumeratorOffset());
        QCOMPARE(metaObject.superClass(), &QObject::staticMetaObject);
    }

    void everyEngineHasItsOwn()
    {
        // Under a name of its own, or the engine would load the built plugin over these types.
        component::registerAll("component.under.test");
        const auto instanceOf = [](QQmlEngine &engine) {
            QQmlComponent document(&engine);
            document.setData("import QtQml 2.15\nimport component.under.test 1.0\n"
                             "QtObject { property QtObject tool: ImUtil }",
                             QUrl());
            const QScopedPointer<QObject> object(document.create());
            return object ? object->property("tool").value<QObject *>() : nullptr;
        };
        QQmlEngine first;
        QQmlEngine second;
        QVERIFY(qobject_cast<ImUtil *>(instanceOf(first)));
        QCOMPARE(instanceOf(first), instanceOf(first));
        QVERIFY(instanceOf(first) != instanceOf(second));
    }

    void theScreenOfAWindowIsItsFreeArea()
    {
        QVERIFY(util.screenRect(nullptr).isEmpty());
        QWindow window;
        const QRect area = window.screen()->availableGeometry();
        QCOMPARE(util.screenRect(&window), (QVariantMap{{QStringLiteral("x"), area.x()},
                                                        {QStringLiteral("y"), area.y()},
                                                        {QStringLiteral("width"), area.width()},
                                                        {QStringLiteral("height"), area.height()}}));
    }

    void theDesktopIsAllScreensTogether()
    {
        QRect all;
        const auto screens = QGuiApplication::screens();
        for (const QScreen *screen : screens)
            all |= screen->geometry();
        QCOMPARE(util.desktopGeometry(), all);
    }

    void thePointerIsWhereTheSystemSaysItIs()
    {
        QCursor::setPos(33, 44);
        QCOMPARE(util.mousePostion(), QCursor::pos());
    }

    void aRectangleContainsItsEdges()
    {
        const QRect rect(10, 20, 30, 40);
        QVERIFY(util.isContainsPoint(rect, QPoint(10, 20)));
        QVERIFY(util.isContainsPoint(rect, QPoint(39, 59)));
        QVERIFY(!util.isContainsPoint(rect, QPoint(40, 59)));
        QVERIFY(!util.isContainsPoint(rect, QPoint(9, 20)));
        QVERIFY(!util.isContainsPoint(QRect(), QPoint(0, 0)));
    }

    void sizesAreTakenOutOfVariants()
    {
        QCOMPARE(util.variantToSize(QSizeF(1.5, 2)), QSizeF(1.5, 2));
        QCOMPARE(util.variantToSize(QSize(3, 4)), QSizeF(3, 4));
        QVERIFY(!util.variantToSize(QStringLiteral("text")).isValid());
        QVERIFY(!util.variantToSize(QVariant()).isValid());
    }

    void theSystemsVersionHasThreeParts()
    {
        const auto version = QOperatingSystemVersion::current();
        QCOMPARE(util.systemVersion(), (QVariantMap{{QStringLiteral("major"), version.majorVersion()},
                                                    {QStringLiteral("minor"), version.minorVersion()},
                                                    {QStringLiteral("micro"), version.microVersion()}}));
    }

    void theMutexKeepsAnotherThreadOut()
    {
        util.lockThread();
        std::atomic_bool isIn{false};
        std::thread other([&] {
            util.lockThread();
            isIn = true;
            util.unlockThread();
        });
        QTest::qWait(100);
        const bool wasIn = isIn;
        util.unlockThread();
        other.join();
        QVERIFY(!wasIn);
        QVERIFY(isIn);
    }

    void eachToolboxHasAMutexOfItsOwn()
    {
        ImUtil other;
        util.lockThread();
        other.lockThread();
        other.unlockThread();
        util.unlockThread();
    }
};

QTEST_MAIN(TestImUtil)
#include "tst_imutil.moc"
