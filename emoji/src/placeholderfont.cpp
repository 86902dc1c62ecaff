#include "emoji/placeholderfont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHash>
#include <QLoggingCategory>
#include <QPointer>
#include <QStringList>

#include <mutex>
#include <shared_mutex>

namespace emoji {
namespace {

Q_LOGGING_CATEGORY(log, "component.emoji")

/// The families that `font` asks for, in order. `QFont::family` may itself be a list.
QStringList wantedFamilies(const QFont &font)
{
    QStringList families = font.families();
    const QStringList more = font.family().split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &family : more) {
        QString name = family.trimmed();
        if (name.size() > 1 && (name.startsWith(QLatin1Char('"')) || name.startsWith(QLatin1Char('\''))) &&
            name.endsWith(name.front()))
            name = name.mid(1, name.size() - 2);
        if (!name.isEmpty() && !families.contains(name))
            families.append(name);
    }
    return families;
}

/// Font lists that were worked out before, by what the font asked for.
class KnownFamilies
{
public:
    [[nodiscard]] QStringList find(const QString &wanted) const
    {
        const std::shared_lock locker(lock);
        return lists.value(wanted);
    }

    void insert(const QString &wanted, const QStringList &families)
    {
        const std::unique_lock locker(lock);
        lists.insert(wanted, families);
    }

private:
    mutable std::shared_mutex lock;
    QHash<QString, QStringList> lists;
};

} // namespace

void registerPlaceholderFont()
{
    static std::mutex mutex;
    static QPointer<QCoreApplication> registeredWith; // application fonts go with the application object

    const std::lock_guard locker(mutex);
    auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!application || registeredWith == application)
        return;
    registeredWith = application;
    if (QFontDatabase::addApplicationFont(QStringLiteral(":/emoji/placeholder.ttf")) < 0)
        qCWarning(log, "The font for placeholder characters can not be added");
}

QString placeholderFamily()
{
    return QStringLiteral("Component Placeholders");
}

QFont withPlaceholders(const QFont &font)
{
    static auto *known = new KnownFamilies; // workers may still ask while static objects are destroyed

    if (font.families().contains(placeholderFamily()))
        return font;
    registerPlaceholderFont();
    const QString wanted = font.families().join(QLatin1Char(',')) + QLatin1Char('\n') + font.family();
    QStringList families = known->find(wanted);
    if (families.isEmpty()) {
        // Behind an alias or a family that is not installed, the family that the font resolves to must be
        // named before ours. Otherwise Qt would take ours for the main font, and its metrics for those of the
        // line.
        families = wantedFamilies(font);
        const QString resolved = QFontInfo(font).family();
        if (!resolved.isEmpty() && !families.contains(resolved))
            families.append(resolved);
        families.append(placeholderFamily());
        known->insert(wanted, families);
    }
    QFont result = font;
    result.setFamilies(families);
    return result;
}

} // namespace emoji
