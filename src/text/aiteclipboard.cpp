#include "aiteclipboard.h"

#include <QDataStream>
#include <QIODevice>
#include <QMetaType>
#include <QMimeData>
#include <QtEndian>

namespace aiteclipboard {
namespace {

/// Deepest nesting of lists and maps in a mention's data. `QVariant` reads them by recursion, and a few
/// hundred kilobytes of nested lists would use up the stack.
constexpr int maximumDepth = 128;
/// Length of a null string or byte array.
constexpr quint32 nullLength = 0xffffffff;

/// Walks over serialised values without building them. `QDataStream` trusts the counts it reads: one lie
/// about the length of a list makes it reserve gigabytes and ends the program, so nothing is decoded before
/// it has been walked over here.
class ValueScanner
{
public:
    explicit ValueScanner(const QByteArray &bytes)
        : bytes(bytes)
    {}

    bool skip(quint32 count)
    {
        if (count > quint32(bytes.size() - position))
            return false;
        position += int(count);
        return true;
    }

    bool read(quint32 &value)
    {
        const int start = position;
        if (!skip(sizeof value))
            return false;
        value = qFromBigEndian<quint32>(bytes.constData() + start);
        return true;
    }

    bool readByte(quint8 &value)
    {
        const int start = position;
        if (!skip(1))
            return false;
        value = quint8(bytes.at(start));
        return true;
    }

    bool skipBytes()
    {
        quint32 length = 0;
        return read(length) && (length == nullLength || skip(length));
    }

    bool skipString()
    {
        quint32 length = 0;
        return read(length) && (length == nullLength || (length % 2 == 0 && skip(length)));
    }

    /// A list whose elements `skipElement` steps over. Every element takes at least one byte, so a count that
    /// lies ends at the end of the data.
    template <typename SkipElement>
    bool skipList(SkipElement skipElement)
    {
        quint32 count = 0;
        if (!read(count) || count > quint32(bytes.size() - position))
            return false;
        for (quint32 i = 0; i < count; ++i) {
            if (!skipElement())
                return false;
        }
        return true;
    }

    bool skipDateTime()
    {
        quint8 spec = 0;
        // A day of 8 bytes, a time of 4.
        if (!skip(12) || !readByte(spec))
            return false;
        switch (spec) {
        case Qt::LocalTime:
        case Qt::UTC:
            return true;
        case Qt::OffsetFromUTC:
            return skip(4);
        default:
            return false;
        }
    }

    bool skipVariant(int depth = 0)
    {
        quint32 type = 0;
        quint8 isNull = 0;
        if (depth > maximumDepth || !read(type) || !readByte(isNull))
            return false;
        switch (type) {
        case QMetaType::UnknownType:
        case QMetaType::Nullptr:
            return true;
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
            return skip(1);
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::QChar:
            return skip(2);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::QTime:
            return skip(4);
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float: // written in double precision
        case QMetaType::QDate:
            return skip(8);
        case QMetaType::QUuid:
            return skip(16);
        case QMetaType::QDateTime:
            return skipDateTime();
        case QMetaType::QString:
            return skipString();
        case QMetaType::QByteArray:
        case QMetaType::QUrl:
            return skipBytes();
        case QMetaType::QStringList:
            return skipList([this] { return skipString(); });
        case QMetaType::QVariantList:
            return skipList([this, depth] { return skipVariant(depth + 1); });
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            return skipList([this, depth] { return skipString() && skipVariant(depth + 1); });
        default:
            return false;
        }
    }

    bool skipAite()
    {
        constexpr int positionsAndKind = 12;
        return skip(positionsAndKind) && skipVariant();
    }

private:
    const QByteArray &bytes;
    int position = 0;
};

} // namespace

QString mimeType()
{
    return QStringLiteral("ostrel/aite");
}

QString toBase64(const QVector<TextSpan> &aites)
{
    if (aites.isEmpty())
        return {};
    QByteArray bytes;
    // No version is set: both ends of a paste run the same Qt.
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint32(aites.size());
    for (const TextSpan &aite : aites)
        stream << qint32(aite.from) << qint32(aite.to) << qint32(aite.kind) << aite.data;
    return QString::fromLatin1(bytes.toBase64());
}

QVector<TextSpan> fromBase64(const QByteArray &base64)
{
    const QByteArray bytes = QByteArray::fromBase64(base64);
    ValueScanner scanner(bytes);
    if (!scanner.skipList([&scanner] { return scanner.skipAite(); }))
        return {};

    QDataStream stream(bytes);
    qint32 count = 0;
    stream >> count;
    QVector<TextSpan> aites;
    aites.reserve(count);
    for (qint32 i = 0; i < count; ++i) {
        qint32 from = -1;
        qint32 to = -1;
        qint32 kind = SpanText;
        QVariant data;
        stream >> from >> to >> kind >> data;
        if (stream.status() != QDataStream::Ok)
            return {};
        aites.append({from, to, data, kind});
    }
    return aites;
}

QMimeData *createMimeData(const QString &text, const QString &aiteData)
{
    auto *mime = new QMimeData;
    mime->setText(text);
    if (!aiteData.isEmpty())
        mime->setData(mimeType(), aiteData.toUtf8());
    return mime;
}

} // namespace aiteclipboard
