// Mentions on the clipboard, which any program can have put there.

#include "fuzzinput.h"

#include "text/aiteclipboard.h"

#include <algorithm>

namespace {

/// The bytes that `written` stands for, without their order: a hash among the values is written in an order
/// of its own, which differs between two that are equal.
QByteArray unordered(const QString &written)
{
    QByteArray bytes = QByteArray::fromBase64(written.toLatin1());
    std::sort(bytes.begin(), bytes.end());
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    require(aiteclipboard::fromBase64(bytes).size() <= bytes.size(), "a mention takes some bytes");

    const QVector<TextSpan> aites = aiteclipboard::fromBase64(bytes.toBase64());
    const QString written = aiteclipboard::toBase64(aites);
    require(written.isEmpty() == aites.isEmpty(), "only no mentions are no text");
    // The written forms are compared, because values such as "not a number" equal nothing.
    const QVector<TextSpan> read = aiteclipboard::fromBase64(written.toLatin1());
    require(unordered(aiteclipboard::toBase64(read)) == unordered(written),
            "what was read can be written and read again");
    return 0;
}
