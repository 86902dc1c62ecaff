// What the module's documents do in an inactive application, and in the course of time, which no test in QML
// can tell: on a display without a vertical refresh, Qt's threaded rendering runs animations as fast as it
// can.

#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

#include <memory>

namespace {

/// The round buttons and, in each, whether its glyph shows.
struct MacButtons
{
    explicit MacButtons(const QQuickItem *buttons)
    {
        const auto rows = buttons->childItems();
        for (const QQuickItem *row : rows) {
            const auto circles = row->childItems();
            for (const QQuickItem *circle : circles) {
                if (!circle->property("radius").isValid())
                    continue;
                colors.append(circle->property("color").value<QColor>().name());
                glyphsAreVisible.append(circle->childItems().constFirst()->isVisible());
            }
        }
    }

    QStringList colors;
    QVector<bool> glyphsAreVisible;
};

const QStringList gray{QStringLiteral("#dddddd"), QStringLiteral("#dddddd"), QStringLiteral("#dddddd")};
const QStringList lit{QStringLiteral("#f36058"), QStringLiteral("#ffcc33"), QStringLiteral("#30cc40")};
const QVector<bool> none(3, false);

/// A click effect that fills a window: blue, with a red ripple, on white.
class Ripple
{
public:
    explicit Ripple(std::unique_ptr<QObject> document)
        : effect(std::move(document))
    {
        window.resize(200, 100);
        window.setColor(Qt::white);
        auto *item = qobject_cast<QQuickItem *>(effect.get());
        item->setSize(window.size());
        item->setProperty("backgroundColor", QColor(Qt::blue));
        item->setProperty("spreadColor", QColor(Qt::red));
        item->setParentItem(window.contentItem());
        window.show();
    }

    void start()
    {
        QMetaObject::invokeMethod(effect.get(), "touchStart", Q_ARG(QVariant, 100), Q_ARG(QVariant, 50));
    }
    void end() { QMetaObject::invokeMethod(effect.get(), "touchEnd"); }
    [[nodiscard]] double spread() const { return effect->property("spread").toDouble(); }
    [[nodiscard]] double opacity() const { return effect->property("opacity").toDouble(); }

    struct Look
    {
        int strength = 0; ///< how much of the effect shows, 0 to 255
        int covered = 0;  ///< pixels of the middle row that the ripple covers
    };
    [[nodiscard]] Look look()
    {
        const QImage picture = window.grabWindow();
        // In a corner, where the ripple comes last, there is blue alone.
        Look seen;
        seen.strength = 255 - qGreen(picture.pixel(1, 1));
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, picture.height() / 2);
            seen.covered += qRed(pixel) - qGreen(pixel) > seen.strength / 2;
        }
        return seen;
    }

    QQuickWindow window;

private:
    std::unique_ptr<QObject> effect;
};

} // namespace

class TestDocuments : public QObject
{
    Q_OBJECT

private:
    QQmlEngine engine;

    [[nodiscard]] std::unique_ptr<QObject> create(const QString &name)
    {
        QQmlComponent document(&engine, QUrl(QStringLiteral("qrc:/qml/%1.qml").arg(name)));
        return std::unique_ptr<QObject>(document.create());
    }

private Q_SLOTS:
    void initTestCase()
    {
        QQmlComponent module(&engine);
        module.setData("import QtQml 2.15\nimport com.ostrel.im.component 1.0\nQtObject {}", QUrl());
        const std::unique_ptr<QObject> loaded(module.create());
        QVERIFY2(loaded, qPrintable(module.errorString()));
    }

    void macButtonsAreGrayInAnInactiveApplication()
    {
        const std::unique_ptr<QObject> object = create(QStringLiteral("MacWindowButtons"));
        auto *buttons = qobject_cast<QQuickItem *>(object.get());
        QVERIFY(buttons);
        QVERIFY(QGuiApplication::applicationState() != Qt::ApplicationActive);
        QCOMPARE(MacButtons(buttons).colors, gray);
        QCOMPARE(MacButtons(buttons).glyphsAreVisible, none);

        QQuickWindow window;
        window.resize(300, 200);
        buttons->setParentItem(window.contentItem());
        window.show();
        window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTRY_COMPARE_WITH_TIMEOUT(MacButtons(buttons).colors, lit, 10000);

        window.hide();
        QTRY_VERIFY_WITH_TIMEOUT(QGuiApplication::applicationState() != Qt::ApplicationActive, 10000);
        QTRY_COMPARE_WITH_TIMEOUT(MacButtons(buttons).colors, gray, 10000);
        buttons->setParentItem(nullptr);
    }

    void anEndDuringTheStartGoesOnFromThere()
    {
        Ripple ripple(create(QStringLiteral("ButtonClickEffect")));
        QVERIFY(QTest::qWaitForWindowExposed(&ripple.window));
        ripple.start();
        QTRY_VERIFY_WITH_TIMEOUT(ripple.look().covered > 20, 10000);
        ripple.end();
        const double spread = ripple.spread();
        QVERIFY2(spread > 0.05 && spread <= 1, qPrintable(QString::number(spread)));
        // Twice the radius, which is half the item's width at the most; one that began anew would be smaller
        // for some time. A busy machine may show nothing but the end of the fading.
        for (int looks = 0; looks < 10; ++looks) {
            const Ripple::Look seen = ripple.look();
            if (seen.strength < 40)
                break;
            QVERIFY2(seen.covered >= int(spread * 200) - 4, qPrintable(QString::number(seen.covered)));
            QTest::qWait(10);
        }
        QTRY_COMPARE_WITH_TIMEOUT(ripple.opacity(), 0.0, 10000);
        QCOMPARE(ripple.spread(), 1.0);
        QCOMPARE(ripple.look().strength, 0);
    }

    void anEndThatComesAtOnceStillFadesFromFullOpacity()
    {
        Ripple ripple(create(QStringLiteral("ButtonClickEffect")));
        QVERIFY(QTest::qWaitForWindowExposed(&ripple.window));
        QCOMPARE(ripple.look().strength, 0);
        // The fading is fast at first, so a busy machine may show its end alone.
        int strongest = 0;
        for (int attempt = 0; attempt < 10 && strongest < 100; ++attempt) {
            ripple.start();
            ripple.end();
            for (int looks = 0; looks < 5 && strongest < 100; ++looks) {
                QTest::qWait(10);
                strongest = qMax(strongest, ripple.look().strength);
            }
        }
        QVERIFY2(strongest >= 100, qPrintable(QString::number(strongest)));
        QTRY_COMPARE_WITH_TIMEOUT(ripple.opacity(), 0.0, 10000);
    }
};

int main(int argc, char **argv)
{
    // Animations by the clock.
    qputenv("QSG_RENDER_LOOP", "basic");
    QGuiApplication application(argc, argv);
    TestDocuments test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_documents.moc"
