// Mentions and keywords in the document of a Qt Quick text editor.

#include "util/syntaxhighlighter.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

namespace {

const QColor mentionColor(0x46, 0x82, 0xB4); // steel blue

} // namespace

class TestSyntaxHighlighter : public QObject
{
    Q_OBJECT

private:
    QQmlEngine engine;
    QScopedPointer<QObject> editor;
    QQuickTextDocument *quickDocument = nullptr;
    QScopedPointer<SyntaxHighlighter> highlighter;

    [[nodiscard]] QTextDocument *document() const { return quickDocument->textDocument(); }

    /// One letter per character of a block: "m" for a mention, "k" for the keyword, "." for neither.
    [[nodiscard]] QString marks(int blockNumber = 0) const
    {
        const QTextBlock block = document()->findBlockByNumber(blockNumber);
        QString marks(block.text().size(), QLatin1Char('.'));
        const auto ranges = block.layout()->formats();
        for (const QTextLayout::FormatRange &range : ranges) {
            const bool isMention = range.format.foreground().color() == mentionColor;
            for (int i = range.start; i < range.start + range.length && i < marks.size(); ++i)
                marks[i] = isMention ? QLatin1Char('m') : QLatin1Char('k');
        }
        return marks;
    }
    [[nodiscard]] QTextCharFormat formatAt(int position) const
    {
        const auto ranges = document()->firstBlock().layout()->formats();
        for (const QTextLayout::FormatRange &range : ranges) {
            if (position >= range.start && position < range.start + range.length)
                return range.format;
        }
        return {};
    }

private Q_SLOTS:
    void init()
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.15\nTextEdit {}", QUrl());
        editor.reset(component.create());
        QVERIFY2(editor, qPrintable(component.errorString()));
        quickDocument = editor->property("textDocument").value<QQuickTextDocument *>();
        QVERIFY(quickDocument);
        highlighter.reset(new SyntaxHighlighter);
        highlighter->setDocument(quickDocument);
    }
    void cleanup()
    {
        highlighter.reset();
        editor.reset();
    }

    void mentionsAndKeywordsAreMarked_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("keyword");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *text, const char *keyword, const char *expected) {
            QTest::newRow(qPrintable(QLatin1String(text) + QLatin1Char('|') + QLatin1String(keyword)))
                << QString::fromUtf8(text) << QString::fromUtf8(keyword) << QString::fromUtf8(expected);
        };
        row("", "a", "");
        row("plain", "", ".....");
        row("a @b c", "", ".mmmm.");
        row("@b", "", "mm");
        row("@b c", "", "mm..");
        row("a@b", "", "...");
        row("a @b", "", ".mmm");
        row("a @", "", "...");
        row("@", "", "m");
        row("a @ b", "", ".....");
        row("a @b @c d", "", ".mmmmmmm.");
        row("a @b  @c", "", ".mmmmmmm");
        row("@a @b", "", "mmmmm");
        row("a @b@c d", "", ".mmmmmm.");
        row("a\t@b\tc", "", ".mmmm.");
        row("a b@c @d", "", ".....mmm");
        row(" @b", "", "mmm");
        row("aaa", "aa", "kk.");
        row("aaaa", "aa", "kkkk");
        row("Aa", "a", ".k");
        row("abcabc", "bc", ".kk.kk");
        row("a @bcd e", "cd", ".mmmkkm.");
        row("@bcd", "@", "kmmm");
        row("x", "xy", ".");
        row("a.c abc", "a.c", "kkk....");
    }
    void mentionsAndKeywordsAreMarked()
    {
        QFETCH(QString, text);
        QFETCH(QString, keyword);
        QFETCH(QString, expected);
        highlighter->setKeyword(keyword);
        editor->setProperty("text", text);
        QCOMPARE(marks(), expected);
    }

    void blocksAreMarkedOneByOne()
    {
        editor->setProperty("text", QStringLiteral("a @b\n@c d\ne@f"));
        QCOMPARE(marks(0), QStringLiteral(".mmm"));
        QCOMPARE(marks(1), QStringLiteral("mm.."));
        QCOMPARE(marks(2), QStringLiteral("..."));
    }

    void typingMarksItsBlock()
    {
        editor->setProperty("text", QStringLiteral("a "));
        QTextCursor cursor(document());
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(QStringLiteral("@b"));
        QTRY_COMPARE(marks(), QStringLiteral(".mmm"));
    }

    void aNewKeywordShowsAtTheNextEditOrRehighlight()
    {
        editor->setProperty("text", QStringLiteral("abc"));
        highlighter->setKeyword(QStringLiteral("b"));
        QCoreApplication::processEvents();
        QCOMPARE(marks(), QStringLiteral("..."));
        highlighter->rehighlight();
        QTRY_COMPARE(marks(), QStringLiteral(".k."));
        highlighter->setKeyword(QStringLiteral("c"));
        QCoreApplication::processEvents();
        QCOMPARE(marks(), QStringLiteral(".k."));
        QTextCursor(document()).insertText(QStringLiteral("c"));
        QTRY_COMPARE(marks(), QStringLiteral("k..k"));
    }

    void theKeywordHasItsColours()
    {
        highlighter->setKeyword(QStringLiteral("b"));
        editor->setProperty("text", QStringLiteral("b @c"));
        QCOMPARE(formatAt(0).foreground(), QBrush(Qt::red));
        QVERIFY(!formatAt(0).hasProperty(QTextFormat::BackgroundBrush));
        QCOMPARE(formatAt(2).foreground(), QBrush(mentionColor));

        highlighter->setForegroundColor(QStringLiteral("#00ff00"));
        highlighter->setBackgroundColor(QStringLiteral("yellow"));
        highlighter->rehighlight();
        QTRY_COMPARE(formatAt(0).foreground(), QBrush(QColor(0, 255, 0)));
        QCOMPARE(formatAt(0).background(), QBrush(Qt::yellow));
        QCOMPARE(formatAt(2).foreground(), QBrush(mentionColor));
    }

    void propertiesNotifyOnce()
    {
        QCOMPARE(highlighter->keyword() + highlighter->foregroundColor() + highlighter->backgroundColor(),
                 QString());
        QSignalSpy keyword(highlighter.data(), &SyntaxHighlighter::keywordChanged);
        QSignalSpy foreground(highlighter.data(), &SyntaxHighlighter::foregroundColorChanged);
        QSignalSpy background(highlighter.data(), &SyntaxHighlighter::backgroundColorChanged);
        for (int round = 0; round < 2; ++round) {
            highlighter->setKeyword(QStringLiteral("k"));
            highlighter->setForegroundColor(QStringLiteral("blue"));
            highlighter->setBackgroundColor(QStringLiteral("white"));
        }
        QCOMPARE(keyword.count(), 1);
        QCOMPARE(keyword[0][0].toString(), QStringLiteral("k"));
        QCOMPARE(foreground.count(), 1);
        QCOMPARE(foreground[0][0].toString(), QStringLiteral("blue"));
        QCOMPARE(background.count(), 1);
        QCOMPARE(background[0][0].toString(), QStringLiteral("white"));
    }

    void withoutADocumentNothingHappens()
    {
        editor->setProperty("text", QStringLiteral("a @b"));
        highlighter->setDocument(nullptr);
        highlighter->rehighlight();
        editor->setProperty("text", QStringLiteral("c @d"));
        QCOMPARE(marks(), QStringLiteral("...."));

        SyntaxHighlighter fresh;
        fresh.rehighlight();
    }

    void aDocumentThatDiesIsForgotten()
    {
        editor.reset();
        highlighter->rehighlight();
        QVERIFY(!highlighter->document());
    }
};

QTEST_MAIN(TestSyntaxHighlighter)
#include "tst_syntaxhighlighter.moc"
