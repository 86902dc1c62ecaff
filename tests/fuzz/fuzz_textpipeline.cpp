// The whole road of a message from its text and its blocks to laid out paragraphs and the emoji picture.

#include "fuzzinput.h"

#include "text/drawabletext.h"
#include "text/liveitems.h"
#include "text/pipeline.h"
#include "text/placeholders.h"

#include <QGuiApplication>

#include <numeric>

using namespace drawabletext;

namespace {

/// Every step.
constexpr int allDirty = 0xeff;

DrawableText *owner = nullptr;
quint64 ownerId = 0;

void fill(DrawableTextPrivate &state, FuzzInput &input)
{
    state.itemId = ownerId;
    state.elide = Qt::TextElideMode(input.byte() % 4);
    state.wrapMode = QTextOption::WrapMode(input.byte() % 5);
    state.maximumLineCount = std::int8_t(input.byte());
    state.maxWidth = input.byte();
    state.textIndent = input.byte() / 4.0;
    state.reservedWidth = std::int8_t(input.byte());
    state.fixedWidth = std::int8_t(input.byte());
    const std::uint8_t switches = input.byte();
    state.userBlockBold = (switches & 0x1) != 0;
    state.reserveSpace = (switches & 0x2) != 0;
    state.willChangeLineMode = (switches & 0x4) != 0;
    state.onlyHighlightFirstMatchedEnabled = (switches & 0x8) != 0;
    state.alignment = (switches & 0x10) != 0 ? Qt::AlignRight : Qt::AlignLeft;
    if ((switches & 0x20) != 0)
        state.elideText = input.shortText();
    state.highlightText = input.shortText();

    const int blocks = input.byte() % 8;
    for (int i = 0; i < blocks; ++i) {
        const int start = input.position();
        const int length = input.position();
        const int type = input.byte() % 8;
        state.userBlocks.append({start, length, type, QVariant(int(input.byte()))});
    }
    const int textBlocks = input.byte() % 4;
    for (int i = 0; i < textBlocks; ++i) {
        const int paragraph = input.position();
        const int from = input.position();
        const int to = input.position();
        state.textBlocks[paragraph].append({from, to, QVariant(i), SpanTextBlock});
    }

    state.text = input.text();
    state.rawText = state.text;
    state.textChanged = true;
    state.measureFont();
}

void checkAnalysis(const DrawableTextPrivate &state)
{
    const int count = state.paragraphs.size();
    require(state.sourceParagraphs.size() == count, "each paragraph has its source");
    require(state.spans.size() == count, "each paragraph has spans");
    require(state.emojis.size() == count, "each paragraph has emoji");
    require(state.paragraphFormats.size() == count, "each paragraph has formats");

    int emojiCount = 0;
    for (int paragraph = 0; paragraph < count; ++paragraph) {
        emojiCount += state.emojis.at(paragraph).size();
        for (const EmojiRecord &record : state.emojis.at(paragraph)) {
            require(record.pos < state.paragraphs.at(paragraph).size(), "emoji stand within their paragraph");
            require(state.paragraphs.at(paragraph).at(record.pos) == emojiPlaceholder,
                    "a placeholder stands for each emoji");
        }
    }
    require(state.emojiCount == emojiCount, "emoji are counted");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    static QGuiApplication application(*argc, *argv);
    // The steps ask whether the item lives that their result is for.
    static DrawableText item;
    owner = &item;
    ownerId = liveitems::nextId();
    liveitems::add(ownerId, owner);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    DrawableTextPrivate state(owner);
    fill(state, input);
    // Twice, because the steps rewrite the text that they start from.
    for (int pass = 0; pass < 2; ++pass) {
        state.dirtyFlags = allDirty;
        runSteps(state);
        require(!state.isAbandoned(), "the item lives");
        checkAnalysis(state);
        require(state.layouts.size() == state.paragraphs.size(), "each paragraph is laid out");
        runEmojiImageStep(state);
    }
    return 0;
}
