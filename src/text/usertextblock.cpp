#include "usertextblock.h"

#include <QJSValue>

namespace {

QString startKey()
{
    return QStringLiteral("start");
}

QString lengthKey()
{
    return QStringLiteral("length");
}

QString typeKey()
{
    return QStringLiteral("type");
}

QString dataKey()
{
    return QStringLiteral("data");
}

UserTextBlocks blocksFromList(const QVariantList &entries)
{
    UserTextBlocks blocks;
    blocks.reserve(entries.size());
    for (const QVariant &entry : entries) {
        if (entry.userType() == qMetaTypeId<UserTextBlock>()) {
            blocks.append(entry.value<UserTextBlock>());
        } else if (entry.canConvert<QVariantMap>()) {
            const QVariantMap map = entry.toMap();
            blocks.append({map.value(startKey()).toInt(), map.value(lengthKey()).toInt(),
                           map.value(typeKey()).toInt(), map.value(dataKey())});
        }
    }
    return blocks;
}

UserTextBlocks blocksFromScript(const QJSValue &value)
{
    const QVariant plain = value.toVariant();
    if (plain.userType() == qMetaTypeId<UserTextBlocks>())
        return plain.value<UserTextBlocks>();
    return blocksFromList(plain.toList());
}

QVariantList listFromBlocks(const UserTextBlocks &blocks)
{
    QVariantList entries;
    entries.reserve(blocks.size());
    for (const UserTextBlock &block : blocks) {
        entries.append(QVariantMap{{startKey(), block.start},
                                   {lengthKey(), block.length},
                                   {typeKey(), block.type},
                                   {dataKey(), block.data}});
    }
    return entries;
}

} // namespace

bool operator==(const UserTextBlock &a, const UserTextBlock &b)
{
    return a.start == b.start && a.length == b.length && a.type == b.type && a.data == b.data;
}

void registerUserTextBlockTypes()
{
    static const bool registered = [] {
        qRegisterMetaType<UserTextBlock>("UserTextBlock");
        qRegisterMetaType<UserTextBlocks>("UserTextBlocks");
        return QMetaType::registerConverter<QVariantList, UserTextBlocks>(blocksFromList) &&
               QMetaType::registerConverter<QJSValue, UserTextBlocks>(blocksFromScript) &&
               QMetaType::registerConverter<UserTextBlocks, QVariantList>(listFromBlocks);
    }();
    Q_ASSERT(registered);
    Q_UNUSED(registered)
}

UserTextBlocks userTextBlocksFrom(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<UserTextBlocks>())
        return *static_cast<const UserTextBlocks *>(value.constData());
    registerUserTextBlockTypes();
    QVariant converted = value;
    if (!converted.convert(qMetaTypeId<UserTextBlocks>()))
        return {};
    return converted.value<UserTextBlocks>();
}
