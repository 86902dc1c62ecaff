// What clicks, double clicks and hovers find in the text, handler by handler.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

namespace {

constexpr int patience = 10'000; // ms

} // namespace

class TestActivation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- activation

    void clickActivatesTheSpan_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QVariant>("data");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QVariant>("argument");
        const QVariant x = QStringLiteral("data");
        const auto text = [](const char *latin) { return QVariant(QString::fromLatin1(latin)); };
        const auto row = [](const char *tag, int type, const char *shown, const QVariant &data,
                            const char *signal, const QVariant &argument) {
            QTest::newRow(tag) << type << QString::fromLatin1(shown) << data << QByteArray(signal)
                               << argument;
        };
        const char *link = SIGNAL(linkActivated(QString));
        row("link without a scheme", Link, "example.com", x, link, text("http://example.com"));
        row("link with a scheme", Link, "https://example.com", x, link, text("https://example.com"));
        row("link with another scheme", Link, "ftp:example", x, link, text("ftp:example"));
        row("local file", Link, "file:///a/b.txt", x, link, text("file:///a/b.txt"));
        row("path with a drive", Link, "C:/a/b.txt", x, link, text("C:/a/b.txt"));
        row("e-mail", Email, "a@b.org", x, link, text("mailto:a@b.org"));
        row("e-mail with its scheme", Email, "mailto:a@b.org", x, link, text("mailto:a@b.org"));
        row("e-mail with its scheme in capitals", Email, "MAILTO:a@b.org", x, link,
            text("mailto:MAILTO:a@b.org"));
        row("mention", Aite, "@Ann", 7, SIGNAL(aiteClick(QVariant)), 7);
        row("mention of nobody", Aite, "@all", 0, SIGNAL(aiteClick(QVariant)), 0);
        row("user id", OstrelId, "@ann", x, SIGNAL(ostrelIdClick(QVariant)), text("ann"));
        row("user id with two signs", OstrelId, "@@ann", x, SIGNAL(ostrelIdClick(QVariant)), text("@ann"));
        row("user id without a sign", OstrelId, "ann", x, SIGNAL(ostrelIdClick(QVariant)), text("ann"));
        row("tag", Sharp, "#fun", x, SIGNAL(sharpClick(QString)), text("#fun"));
        row("text block", Other, "block", x, SIGNAL(textBlockClick(QVariant)), x);
    }

    void clickActivatesTheSpan()
    {
        QFETCH(int, type);
        QFETCH(QString, shown);
        QFETCH(QVariant, data);
        QFETCH(QByteArray, signal);
        QFETCH(QVariant, argument);
        for (const bool selectByMouse : {false, true}) {
            ProbeText item(QStringLiteral("a ") + shown + QStringLiteral(" b"));
            item.setSelectByMouse(selectByMouse);
            item.setUserBlocks(blocks({block(2, shown.size(), type, data)}));
            QSignalSpy expected(&item, signal.constData());
            QSignalSpy releases(&item, &DrawableText::mouseRelease);
            const int all = countAll(item, [&item] {
                const QPointF point = TextReference(item.state()).center(0, 3);
                item.press(point);
                item.release(point);
            });
            QCOMPARE(all, 1);
            QCOMPARE(expected.count(), 1);
            QVariant actual = expected.first().first();
            if (actual.userType() == QMetaType::QVariant)
                actual = actual.value<QVariant>();
            QCOMPARE(actual, argument);
            QCOMPARE(releases.count(), 1);
            QCOMPARE(releases.first().first().toBool(), true);
        }
    }

    void clickOnWhatIsNotInteractiveActivatesNothing()
    {
        ProbeText item(QStringLiteral("call 12345 \U0001F600 now"));
        item.setUserBlocks(blocks({block(5, 5, Phone, QStringLiteral("12345"))}));
        item.setHighlightText(QStringLiteral("now"));
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        const TextReference reference(item.state());
        for (const int position : {0, 6, 11, 14}) {
            const int all = countAll(item, [&] {
                item.press(reference.center(0, position));
                item.release(reference.center(0, position));
            });
            QCOMPARE(all, 0);
            QCOMPARE(releases.takeFirst().first().toBool(), false);
        }
    }

    void clickBesideACharacterActivatesNothing()
    {
        ProbeText item;
        item.setRightPadding(10);
        item.setText(QStringLiteral("example.com"));
        item.setUserBlocks(blocks({block(0, 11, Link, QStringLiteral("x"))}));
        const double right = item.state()->layouts.first()->lineAt(0).naturalTextWidth();
        const QPointF point(right + 4, 5);
        QCOMPARE(countAll(item,
                          [&] {
                              item.press(point);
                              item.release(point);
                          }),
                 0);
    }

    void linkTextHasItsEmojiAsTyped()
    {
        ProbeText item(QStringLiteral("x\U0001F600y.com"));
        item.setUserBlocks(blocks({block(0, 8, Link, QStringLiteral("data"))}));
        item.setHighlightText(QStringLiteral("com"));
        QSignalSpy links(&item, &DrawableText::linkActivated);
        const TextReference reference(item.state());
        // Emoji and highlights within a link belong to it.
        for (const int position : {0, 1, 5}) {
            item.press(reference.center(0, position));
            item.release(reference.center(0, position));
            QCOMPARE(links.count(), 1);
            QCOMPARE(links.takeFirst().first().toString(), QStringLiteral("http://x\U0001F600y.com"));
        }
    }

    void blockOfTheClientAnswersToAClick()
    {
        ProbeText item(QStringLiteral("abc\ndef"));
        item.addTextBlock(1, 2, QStringLiteral("more"), 1);
        QSignalSpy clicks(&item, &DrawableText::textBlockClick);
        const TextReference reference(item.state());
        for (const QPointF point : {reference.center(0, 1), reference.center(1, 1), reference.center(1, 0)}) {
            item.press(point);
            item.release(point);
        }
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(clicks.first().first().value<QVariant>().toString(), QStringLiteral("more"));
    }

    // ---- double and triple clicks

    void doubleClickBesideTheTextSelectsAll()
    {
        ProbeText item(QStringLiteral("ab\nabcdefgh"));
        const double y = TextReference(item.state()).center(0, 0).y();
        QVERIFY(!item.doubleClick(QPointF(item.width() - 5, y), true));
        QCOMPARE(item.selectedText(), QStringLiteral("ab\nabcdefgh"));
        QVERIFY(!item.state()->wordJustSelected);
    }

    void doubleClickOnAWordPassesOn()
    {
        ProbeText item(QStringLiteral("ab cd"));
        QVERIFY(!item.doubleClick(TextReference(item.state()).center(0, 0), true));
        QCOMPARE(item.selectedText(), QStringLiteral("ab"));
    }

    void doubleClickDoesNothingWhereItIsDisabled()
    {
        ProbeText item(QStringLiteral("ab cd"));
        const QPointF point = TextReference(item.state()).center(0, 0);
        item.setDoubleClickEnabled(false);
        QVERIFY(item.doubleClick(point, true));
        QVERIFY(!item.doubleClick(point, false));
        item.setDoubleClickEnabled(true);
        item.setSelectByMouse(false);
        QVERIFY(item.doubleClick(point, true));
        QVERIFY(!item.doubleClick(point, false));
        QCOMPARE(item.selectedText(), QString());
    }

    void clickSoonAfterADoubleClickSelectsAll()
    {
        ProbeText item(QStringLiteral("ab cd"));
        item.setUserBlocks(blocks({block(0, 2, Link, QStringLiteral("x"))}));
        const QPointF point = TextReference(item.state()).center(0, 0);
        QSignalSpy links(&item, &DrawableText::linkActivated);
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        item.doubleClick(point);
        item.press(point);
        item.release(point);
        QCOMPARE(item.selectedText(), QStringLiteral("ab cd"));
        QCOMPARE(links.count(), 0);
        QCOMPARE(releases.takeLast().first().toBool(), false);
        QVERIFY(!item.state()->wordJustSelected);
        // That used the moment up.
        item.press(point);
        item.release(point);
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(links.count(), 1);
    }

    void clickLongAfterADoubleClickClearsTheSelection()
    {
        ProbeText item(QStringLiteral("ab cd"));
        const QPointF point = TextReference(item.state()).center(0, 0);
        item.doubleClick(point);
        QTRY_VERIFY_WITH_TIMEOUT(!item.state()->wordJustSelected, patience);
        item.press(point);
        item.release(point);
        QCOMPARE(item.selectedText(), QString());
    }

    void wordIsRememberedForThreeHundredMilliseconds()
    {
        ProbeText item(QStringLiteral("ab cd"));
        QElapsedTimer timer;
        timer.start();
        item.doubleClick(TextReference(item.state()).center(0, 0));
        while (item.state()->wordJustSelected && timer.elapsed() < patience)
            QTest::qWait(5);
        // A coarse timer may fire a twentieth early; how late is up to the machine.
        QVERIFY2(timer.elapsed() >= 285, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(!item.state()->wordJustSelected);
    }

    void itemThatDiesBeforeTheWordIsForgottenIsHarmless()
    {
        {
            ProbeText item(QStringLiteral("ab cd"));
            item.doubleClick(TextReference(item.state()).center(0, 0));
        }
        QTest::qWait(400);
    }

    // ---- hover

    void hoverShowsTheCursorOfTheSpan_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("data");
        QTest::addColumn<int>("shape");
        QTest::addColumn<bool>("hovered"); // by signal
        QTest::addColumn<int>("kind");
        const QVariant x = QStringLiteral("x");
        const int hand = Qt::PointingHandCursor;
        const int none = Qt::ArrowCursor;
        QTest::newRow("link") << int(Link) << x << hand << true << int(SpanLink);
        QTest::newRow("e-mail") << int(Email) << x << hand << true << int(SpanEmail);
        QTest::newRow("tag") << int(Sharp) << x << hand << true << int(SpanSharp);
        QTest::newRow("mention") << int(Aite) << QVariant(7) << hand << false << int(SpanAite);
        QTest::newRow("mention of nobody") << int(Aite) << QVariant(0) << hand << false << int(SpanPlainAite);
        QTest::newRow("user id") << int(OstrelId) << x << hand << false << int(SpanOstrelId);
        QTest::newRow("text block") << int(Other) << x << hand << false << int(SpanTextBlock);
        QTest::newRow("phone number") << int(Phone) << x << none << false << int(SpanText);
    }

    void hoverShowsTheCursorOfTheSpan()
    {
        QFETCH(int, type);
        QFETCH(QVariant, data);
        QFETCH(int, shape);
        QFETCH(bool, hovered);
        QFETCH(int, kind);
        ProbeText item(QStringLiteral("ab cde f"));
        item.setTextCursorShape(Qt::IBeamCursor);
        item.setUserBlocks(blocks({block(3, 3, type, data)}));
        const TextReference reference(item.state());
        QSignalSpy links(&item, &DrawableText::linkHovered);

        item.hover(reference.center(0, 1));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        QCOMPARE(links.count(), 0);

        QVERIFY(!item.hover(reference.center(0, 4)));
        QCOMPARE(int(item.cursor().shape()), shape);
        QCOMPARE(item.state()->hoverSpan.kind, kind);
        // Each move over a link tells it again.
        item.hover(reference.center(0, 5));
        QCOMPARE(links.count(), hovered ? 2 : 0);
        if (hovered)
            QCOMPARE(links.first().first().toString(), QStringLiteral("x"));

        item.hover(reference.center(0, 7));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        item.leave();
        QCOMPARE(int(item.cursor().shape()), int(Qt::ArrowCursor));
        QVERIFY(item.state()->hoverSpan == TextSpan());
        QCOMPARE(links.count(), hovered ? 2 : 0);
    }

    void hoverOverAHighlightIsCleared()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        item.setTextCursorShape(Qt::IBeamCursor);
        item.setHighlightText(QStringLiteral("cde"));
        const TextReference reference(item.state());
        item.hover(reference.center(0, 0));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        item.hover(reference.center(0, 4));
        QCOMPARE(int(item.cursor().shape()), int(Qt::ArrowCursor));
    }

    void hoverOverAnEmojiShowsTheCursorOfText()
    {
        ProbeText item(QStringLiteral("a\U0001F600"));
        item.setTextCursorShape(Qt::IBeamCursor);
        item.hover(TextReference(item.state()).center(0, 1));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        QCOMPARE(item.state()->hoverSpan.kind, int(SpanEmoji));
    }

    void hoverBesideTheTextIsCleared()
    {
        ProbeText item(QStringLiteral("ab\nabcdefgh"));
        item.setTextCursorShape(Qt::IBeamCursor);
        const TextReference reference(item.state());
        item.hover(reference.center(0, 0));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        item.hover(QPointF(item.width() - 5, reference.center(0, 0).y()));
        QCOMPARE(int(item.cursor().shape()), int(Qt::ArrowCursor));
        item.hover(reference.center(0, 0));
        item.hover(QPointF(5, item.height() + 3));
        QCOMPARE(int(item.cursor().shape()), int(Qt::ArrowCursor));
    }

    void hoverBehindALinkWithinThePaddingIsPlainText()
    {
        ProbeText item;
        item.setRightPadding(20);
        item.setText(QStringLiteral("abcdef"));
        item.setUserBlocks(blocks({block(0, 6, Link, QStringLiteral("x"))}));
        item.setTextCursorShape(Qt::IBeamCursor);
        QSignalSpy links(&item, &DrawableText::linkHovered);
        const double right = item.state()->layouts.first()->lineAt(0).naturalTextWidth();
        item.hover(QPointF(right + 8, 5));
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
        QCOMPARE(links.count(), 0);
    }

    void hoverDuringAPressChangesNothing()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        item.setTextCursorShape(Qt::IBeamCursor);
        item.setUserBlocks(blocks({block(3, 3, Link, QStringLiteral("x"))}));
        const TextReference reference(item.state());
        QSignalSpy links(&item, &DrawableText::linkHovered);
        item.hover(reference.center(0, 0));
        item.press(reference.center(0, 0));
        item.hover(reference.center(0, 4));
        QCOMPARE(links.count(), 0);
        QCOMPARE(int(item.cursor().shape()), int(Qt::IBeamCursor));
    }

private:
    /// How many signals of activation `act` causes, of any kind.
    template <typename Act>
    static int countAll(ProbeText &item, Act act)
    {
        QSignalSpy links(&item, &DrawableText::linkActivated);
        QSignalSpy mentions(&item, &DrawableText::aiteClick);
        QSignalSpy ids(&item, &DrawableText::ostrelIdClick);
        QSignalSpy tags(&item, &DrawableText::sharpClick);
        QSignalSpy textBlocks(&item, &DrawableText::textBlockClick);
        act();
        return links.count() + mentions.count() + ids.count() + tags.count() + textBlocks.count();
    }
};

QTEST_MAIN(TestActivation)
#include "tst_activation.moc"
