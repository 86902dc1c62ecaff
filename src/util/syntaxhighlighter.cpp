#include "syntaxhighlighter.h"

#include <QRegExp>
#include <QTextDocument>

SyntaxHighlighter::SyntaxHighlighter(QObject *parent)
    : QSyntaxHighlighter(parent)
{
    keywordFormat.setForeground(QBrush(Qt::red, Qt::SolidPattern));
    mentionFormat.setForeground(QBrush(QColor(QStringLiteral("steelblue")), Qt::SolidPattern));
}

void SyntaxHighlighter::setKeyword(const QString &keyword)
{
    if (keywordValue == keyword)
        return;
    keywordValue = keyword;
    Q_EMIT keywordChanged(keyword);
}

void SyntaxHighlighter::setForegroundColor(const QString &foregroundColor)
{
    if (foregroundValue == foregroundColor)
        return;
    foregroundValue = foregroundColor;
    keywordFormat.setForeground(QBrush(QColor(foregroundColor), Qt::SolidPattern));
    Q_EMIT foregroundColorChanged(foregroundColor);
}

void SyntaxHighlighter::setBackgroundColor(const QString &backgroundColor)
{
    if (backgroundValue == backgroundColor)
        return;
    backgroundValue = backgroundColor;
    keywordFormat.setBackground(QBrush(QColor(backgroundColor), Qt::SolidPattern));
    Q_EMIT backgroundColorChanged(backgroundColor);
}

void SyntaxHighlighter::setDocument(QQuickTextDocument *doc)
{
    QSyntaxHighlighter::setDocument(doc ? doc->textDocument() : nullptr);
}

void SyntaxHighlighter::rehighlight()
{
    // Parsed afresh, where the base class would only format again: what was pasted with formats of its own
    // comes out the way an editor that is opened anew shows it.
    if (QTextDocument *attached = document())
        attached->setHtml(attached->toHtml());
}

void SyntaxHighlighter::highlightBlock(const QString &text)
{
    if (text.isEmpty())
        return;
    highlightMentions(text);
    highlightLeadingMention(text);
    highlightKeyword(text);
}

void SyntaxHighlighter::highlightMentions(const QString &text)
{
    QRegExp mention(QStringLiteral("[\\s\\r\\n](@[^\\s\\r\\n]+)[\\s\\r\\n]?"), Qt::CaseSensitive,
                    QRegExp::RegExp);
    int position = mention.indexIn(text, 0);
    while (position >= 0) {
        const int length = mention.matchedLength();
        setFormat(position, length, mentionFormat);
        // The white space that ends one mention can begin the next.
        position = mention.indexIn(text, position + length - 1);
    }
}

void SyntaxHighlighter::highlightLeadingMention(const QString &text)
{
    if (!text.startsWith(QLatin1Char('@')))
        return;
    const int end = text.indexOf(QRegExp(QStringLiteral("[\\r\\n\\s]")));
    setFormat(0, end < 0 ? text.size() : end, mentionFormat);
}

void SyntaxHighlighter::highlightKeyword(const QString &text)
{
    if (keywordValue.isEmpty())
        return;
    int position = text.indexOf(keywordValue, 0, Qt::CaseSensitive);
    while (position >= 0) {
        setFormat(position, keywordValue.size(), keywordFormat);
        position = text.indexOf(keywordValue, position + keywordValue.size(), Qt::CaseSensitive);
    }
}
