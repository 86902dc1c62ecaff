// Mentions on the clipboard, which any program can have put there.

#include "fuzzinput.h"

#include "text/aiteclipboard.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    require(aiteclipboard::fromBase64(bytes).size() <= bytes.size(), "a mention takes some bytes");

    const QVector<TextSpan> aites = aiteclipboard::fromBase64(bytes.toBase64());
    const QString written = aiteclipboard::toBase64(aites);
    require(written.isEmpty() == aites.isEmpty(), "only no mentions are no text");
    // The written forms are compared, because values such as "not a number" equal nothing.
    const QVector<TextSpan> read = aiteclipboard::fromBase64(written.toLatin1());
    require(aiteclipboard::toBase64(read) == written, "what was read can be written and read again");
    return 0;
}
