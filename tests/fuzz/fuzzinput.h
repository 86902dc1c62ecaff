#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// Ends the program, which the fuzzer takes for a find, when `condition` does not hold.
inline void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "Violated: %s\n", what);
    std::abort();
}

/// Takes values from the front of a fuzzer's bytes; behind their end all is zero and empty.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t *data, std::size_t size)
        : data(reinterpret_cast<const char *>(data))
        , left(int(size))
    {}

    std::uint8_t byte() { return number<std::uint8_t>(); }

    /// A small number mostly, any number sometimes.
    int position()
    {
        const std::uint8_t first = byte();
        return first == 0x80 ? number<std::int32_t>() : std::int8_t(first);
    }

    /// A text of at most 255 bytes, behind a byte that tells how many.
    QString shortText() { return textFrom(bytes(byte())); }
    /// All that is left.
    QString text() { return textFrom(bytes(left)); }

private:
    /// UTF-8, so that seeds can be read, or raw units behind a byte that UTF-8 never has, so that broken
    /// surrogate pairs occur.
    static QString textFrom(const QByteArray &bytes)
    {
        if (!bytes.startsWith('\xFF'))
            return QString::fromUtf8(bytes);
        QString units((bytes.size() - 1) / 2, Qt::Uninitialized);
        std::memcpy(units.data(), bytes.constData() + 1, std::size_t(units.size()) * sizeof(QChar));
        return units;
    }

    QByteArray bytes(int count)
    {
        const QByteArray taken(data, qMin(count, left));
        skip(taken.size());
        return taken;
    }

    template <typename Number>
    Number number()
    {
        Number value = 0;
        const int size = qMin(left, int(sizeof value));
        if (size > 0)
            std::memcpy(&value, data, std::size_t(size));
        skip(size);
        return value;
    }

    void skip(int count)
    {
        data += count;
        left -= count;
    }

    const char *data;
    int left;
};
