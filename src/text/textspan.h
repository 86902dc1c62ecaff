#pragma once

#include <QVariant>
#include <QVector>

/// What a stretch of text is. Single bits, so that a set of kinds fits an integer.
enum SpanKind : int {
    SpanText = 1,
    SpanEmoji = 2, ///< one collapsed emoji
    SpanLink = 4,
    SpanAite = 8,       ///< mention of a known user
    SpanHighlight = 16, ///< match of the highlighted text
    SpanSelection = 32, ///< key of a character format only; no span has it
    SpanTextBlock = 64, ///< block of `addTextBlock`, or a user block of no other type
    SpanEmail = 128,
    SpanSharp = 256, ///< hash tag
    SpanPhone = 512,
    SpanOstrelId = 1024, ///< user id with a leading "@"
    SpanPlainAite = 2048 ///< mention of nobody: looks like text and still answers to a click
};

/// A marked stretch of one paragraph's layout text.
struct TextSpan
{
    int from = -1; ///< first position, in UTF-16 units
    int to = -1;   ///< last position, inclusive
    QVariant data; ///< what a click hands out; invalid for emoji and highlights
    int kind = SpanText;

    [[nodiscard]] bool contains(int position) const { return from <= position && position <= to; }
};
Q_DECLARE_TYPEINFO(TextSpan, Q_MOVABLE_TYPE);

[[nodiscard]] inline bool operator==(const TextSpan &a, const TextSpan &b)
{
    return a.from == b.from && a.to == b.to && a.kind == b.kind && a.data == b.data;
}

[[nodiscard]] inline bool operator!=(const TextSpan &a, const TextSpan &b)
{
    return !(a == b);
}

/// Removes the spans whose kind is in the set `kinds` from each paragraph's list.
void removeSpans(QVector<QVector<TextSpan>> &spans, int kinds);
