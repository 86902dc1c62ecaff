#pragma once

#include "colortheme/imagecolortheme.h"

#include <QCoreApplication>
#include <QStringList>
#include <QThreadPool>

/// Writes down the signals of a theme in the order in which they come.
inline void record(ImageColorTheme &theme, QStringList *log)
{
    QObject::connect(&theme, &ImageColorTheme::ready, [log] { log->append(QStringLiteral("ready")); });
    QObject::connect(&theme, &ImageColorTheme::sourceChanged,
                     [log](const QString &source) { log->append(QStringLiteral("source ") + source); });
    QObject::connect(&theme, &ImageColorTheme::themeColorChanged, [log](const QColor &color) {
        log->append(QStringLiteral("themeColor ") + color.name());
    });
    QObject::connect(&theme, &ImageColorTheme::colorCountChanged,
                     [log](int count) { log->append(QStringLiteral("colorCount %1").arg(count)); });
    QObject::connect(&theme, &ImageColorTheme::stateChanged, [log](ImageColorTheme::State state) {
        log->append(QStringLiteral("state %1").arg(int(state)));
    });
    QObject::connect(&theme, &ImageColorTheme::algorithmChanged, [log](ImageColorTheme::Algorithm algorithm) {
        log->append(QStringLiteral("algorithm %1").arg(int(algorithm)));
    });
}

/// Lets workers end and delivers what they queued.
inline void settle()
{
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}
