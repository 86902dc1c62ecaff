#include "usertextblock.h"

bool operator==(const UserTextBlock &a, const UserTextBlock &b)
{
    return a.start == b.start && a.length == b.length && a.type == b.type && a.data == b.data;
}

namespace {

const QString startKey = QStringLiteral("start");
const QString lengthKey = QStringLiteral("length");
const QString typeKey = QStringLiteral("type");
const QString dataKey = QStringLiteral("data");

UserTextBlock blockFrom(const QVariant &entry)
{
    if (entry.userType() == qMetaTypeId<UserTextBlock>())
        return entry.value<UserTextBlock>();
    const QVariantMap map = entry.toMap();
    return {map.value(startKey).toInt(), map.value(lengthKey).toInt(), map.value(typeKey).toInt(),
            map.value(dataKey)};
}

UserTextBlocks blocksFrom(const QVariantList &entries)
{
    UserTextBlocks blocks;
    blocks.reserve(entries.size());
    for (const QVariant &entry : entries)
        blocks.append(blockFrom(entry));
    return blocks;
}

QVariantList entriesFrom(const UserTextBlocks &blocks)
{
    QVariantList entries;
    entries.reserve(blocks.size());
    for (const UserTextBlock &block : blocks) {
        entries.append(QVariantMap{{startKey, block.start},
                                   {lengthKey, block.length},
                                   {typeKey, block.type},
                                   {dataKey, block.data}});
    }
    return entries;
}

} // namespace

void registerUserTextBlockTypes()
{
    static const bool registered = [] {
        qRegisterMetaType<UserTextBlock>("UserTextBlock");
        qRegisterMetaType<UserTextBlocks>("UserTextBlocks");
        return QMetaType::registerConverter<QVariantList, UserTextBlocks>(blocksFrom) &&
               QMetaType::registerConverter<UserTextBlocks, QVariantList>(entriesFrom);
    }();
    Q_UNUSED(registered)
}

UserTextBlocks userTextBlocksFrom(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<UserTextBlocks>())
        return *static_cast<const UserTextBlocks *>(value.constData());
    QVariant converted = value;
    if (!converted.convert(qMetaTypeId<UserTextBlocks>()))
        return {};
    return converted.value<UserTextBlocks>();
}
