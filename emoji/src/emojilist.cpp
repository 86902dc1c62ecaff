#include "emoji/emojilist.h"

#include "emojidata.h"
#include "emojitrie.h"

#include <cstring>

namespace emoji {

const QVector<Entry> &allEmoji()
{
    static const QVector<Entry> all = [] {
        QVector<Entry> entries;
        entries.reserve(emojiCount);
        QString group;
        for (int number = 0; number < sectionCount; ++number) {
            const Section &section = sections[number];
            const QString sectionGroup = QString::fromUtf8(section.group);
            if (group != sectionGroup) // equal names share their memory
                group = sectionGroup;
            const QString subgroup = QString::fromUtf8(section.subgroup);
            const char *name = section.names;
            for (int index = section.begin; index < section.end; ++index) {
                entries.append(
                    {keyOf(index), textOf(index).toString(), QString::fromUtf8(name), group, subgroup});
                name += std::strlen(name) + 1;
            }
        }
        return entries;
    }();
    return all;
}

QString emojiName(const QString &text)
{
    const int index = indexOfText(text);
    if (index < 0)
        return {};
    const Section *section = sections;
    while (index >= section->end)
        ++section;
    const char *name = section->names;
    for (int skipped = section->begin; skipped < index; ++skipped)
        name += std::strlen(name) + 1;
    return QString::fromUtf8(name);
}

} // namespace emoji
