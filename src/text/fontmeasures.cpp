#include "fontmeasures.h"

#include "placeholders.h"

#include <emoji/placeholderfont.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPointer>
#include <QThread>
#include <QVector>

#include <algorithm>

namespace drawabletext {
namespace {

FontMeasures takeMeasures(const QFont &font, const QString &elideText)
{
    FontMeasures measures;
    measures.font = font;
    measures.layoutFont = emoji::withPlaceholders(font);
    const QFontMetricsF metrics(measures.layoutFont);
    measures.xWidth = metrics.horizontalAdvance(QLatin1Char('X'));
    measures.spaceWidth = metrics.horizontalAdvance(QLatin1Char(' '));
    measures.elideTextWidth = metrics.horizontalAdvance(elideText);
    measures.height = metrics.height();
    measures.emojiSize = metrics.horizontalAdvance(emojiPlaceholder);
    return measures;
}

/// The answers to the last few questions, the latest first.
class KnownMeasures
{
public:
    FontMeasures of(const QFont &font, const QString &elideText)
    {
        forgetWhenFontsChange();
        const auto isAsked = [&](const Entry &entry) {
            // The comparison of fonts leaves out which of their attributes were set.
            return entry.measures.font == font && entry.measures.font.resolve() == font.resolve() &&
                   entry.elideText == elideText;
        };
        const auto found = std::find_if(entries.begin(), entries.end(), isAsked);
        if (found != entries.end()) {
            std::rotate(entries.begin(), found, found + 1);
            return entries.constFirst().measures;
        }
        if (entries.size() == capacity)
            entries.removeLast();
        entries.prepend({elideText, takeMeasures(font, elideText)});
        return entries.constFirst().measures;
    }

private:
    struct Entry
    {
        QString elideText;
        FontMeasures measures;
    };
    static constexpr int capacity = 8;

    /// A font that is added or removed changes what others resolve to.
    void forgetWhenFontsChange()
    {
        if (application == qGuiApp)
            return;
        application = qGuiApp;
        entries.clear();
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, qGuiApp,
                         [this] { entries.clear(); });
    }

    QPointer<QGuiApplication> application;
    QVector<Entry> entries;
};

} // namespace

FontMeasures measureFont(const QFont &font, const QString &elideText)
{
    if (!qGuiApp || QThread::currentThread() != qGuiApp->thread())
        return takeMeasures(font, elideText);
    // Never destroyed: fonts must not go after the application object.
    static auto *known = new KnownMeasures;
    return known->of(font, elideText);
}

} // namespace drawabletext
