// Blocks inside any text, expanded and flattened.

#include "fuzzinput.h"

#include "text/literalrules.h"
#include "text/placeholders.h"

using namespace drawabletext;

namespace {

/// The expression's engine takes no broken surrogate pairs, and long texts of marks make it give up.
bool isWithinTheExpressionsLimits(const QString &text)
{
    return text.size() < 400 && QString::fromUtf8(text.toUtf8()) == text;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = FuzzInput(data, size).text();

    for (const LineEnds lineEnds : {LineEnds::Keep, LineEnds::BecomeSpaces}) {
        QString literal = text;
        const QVector<TextSpan> expected = literalrules::expand(literal, lineEnds);
        QString expanded = text;
        require(expandInBandBlocks(expanded, lineEnds) == expected,
                "spans are those of replacing one by one");
        require(expanded == literal, "expanding equals replacing one by one");
    }

    const QString flat = flattenUserBlocks(text);
    require(flat.size() <= text.size(), "flattening shortens");
    if (isWithinTheExpressionsLimits(text))
        require(flat == literalrules::flattened(text), "flattening equals the expression");
    return 0;
}
