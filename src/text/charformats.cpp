#include "charformats.h"

#include "drawabletextprivate.h"
#include "perparagraph.h"

#include <algorithm>

namespace drawabletext {
namespace {

/// Kinds that get format ranges, in the order in which equal positions are collected. Emoji are painted over
/// the text; a mention of nobody looks like the text around it.
constexpr SpanKind formattedKinds[] = {SpanAite,  SpanOstrelId, SpanLink,      SpanEmail,
                                       SpanPhone, SpanSharp,    SpanHighlight, SpanTextBlock};

/// No paragraph gets as long as this. Positions beyond it are as good as this one, and their sums stay within
/// an `int`: `QTextEngine` adds start and length of a range without a look, and drops the wrong range when
/// that wraps.
constexpr int farOff = 1 << 29;

QTextCharFormat formatOf(SpanKind kind, const QColor &foreground)
{
    QTextCharFormat format;
    format.setProperty(QTextFormat::UserProperty, int(kind));
    format.setForeground(foreground);
    return format;
}

bool isTransparent(const QColor &color)
{
    return color.alpha() == 0;
}

QTextLayout::FormatRange rangeOf(const TextSpan &span, const QTextCharFormat &format)
{
    const int first = qBound(-farOff, span.from, farOff);
    const int last = qBound(-farOff, span.to, farOff);
    QTextLayout::FormatRange range;
    range.start = first;
    range.length = last - first + 1;
    range.format = format;
    return range;
}

} // namespace

void buildCharFormats(DrawableTextPrivate &state)
{
    const auto orLinkColor = [&state](const QColor &color) {
        return color.isValid() ? color : state.linkColor;
    };

    state.charFormats[SpanEmoji] = formatOf(SpanEmoji, state.color);

    QTextCharFormat textBlock = formatOf(SpanTextBlock, state.textBlockColor);
    if (state.userBlockBold)
        textBlock.setFontWeight(QFont::Medium);
    state.charFormats[SpanTextBlock] = textBlock;

    for (const SpanKind kind : {SpanText, SpanPlainAite}) {
        QTextCharFormat plain = formatOf(kind, state.color);
        plain.setFont(state.font);
        plain.setUnderlineStyle(QTextCharFormat::NoUnderline);
        state.charFormats[kind] = plain;
    }

    QTextCharFormat highlight;
    highlight.setProperty(QTextFormat::UserProperty, int(SpanHighlight));
    if (!isTransparent(state.highlightColor))
        highlight.setForeground(state.highlightColor);
    if (!isTransparent(state.highlightBgColor))
        highlight.setBackground(state.highlightBgColor);
    highlight.setAnchor(true);
    highlight.setUnderlineStyle(QTextCharFormat::NoUnderline);
    state.charFormats[SpanHighlight] = highlight;

    QTextCharFormat aite = formatOf(SpanAite, orLinkColor(state.aiteColor));
    if (state.userBlockBold) {
        // The format's families replace those of the layout, so that it must bring the blank glyphs of the
        // placeholders along.
        QFont bold = state.layoutFont;
        bold.setWeight(QFont::Bold);
        aite.setFont(bold);
    }
    aite.setUnderlineStyle(QTextCharFormat::NoUnderline);
    state.charFormats[SpanAite] = aite;
    state.charFormats[SpanOstrelId] = aite;

    const auto insertLink = [&state](SpanKind kind, const QColor &foreground) {
        QTextCharFormat link = formatOf(kind, foreground);
        link.setUnderlineStyle(QTextCharFormat::NoUnderline);
        state.charFormats[kind] = link;
    };
    insertLink(SpanLink, state.linkColor);
    insertLink(SpanEmail, orLinkColor(state.emailColor));
    insertLink(SpanSharp, orLinkColor(state.sharpColor));

    QTextCharFormat selection = formatOf(SpanSelection, state.selectedTextColor);
    selection.setBackground(state.selectionColor);
    selection.setUnderlineStyle(QTextCharFormat::NoUnderline);
    state.charFormats[SpanSelection] = selection;
}

void buildParagraphFormats(DrawableTextPrivate &state)
{
    state.paragraphFormats = defaultPerParagraph<QVector<QTextLayout::FormatRange>>(state.paragraphs.size());
    QVector<const TextSpan *> formatted;
    for (int paragraph = 0; paragraph < state.paragraphs.size(); ++paragraph) {
        const QVector<TextSpan> &spans = state.spans.at(paragraph);
        if (spans.isEmpty())
            continue;
        formatted.clear();
        for (const SpanKind kind : formattedKinds) {
            for (const TextSpan &span : spans) {
                if (span.kind == kind)
                    formatted.append(&span);
            }
        }
        std::sort(formatted.begin(), formatted.end(),
                  [](const TextSpan *a, const TextSpan *b) { return a->from < b->from; });
        const auto end = std::unique(formatted.begin(), formatted.end(),
                                     [](const TextSpan *a, const TextSpan *b) { return *a == *b; });

        QVector<QTextLayout::FormatRange> &ranges = state.paragraphFormats[paragraph];
        for (auto span = formatted.begin(); span != end; ++span)
            ranges.append(rangeOf(**span, state.charFormats[(*span)->kind]));
    }
}

} // namespace drawabletext
