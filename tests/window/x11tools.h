#pragma once

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

/// Pointer, keys and windows as the X server has them: events come from outside the process, so that the
/// server and the window manager take part as they do with a user.
namespace x11tools {

constexpr int patience = 10'000; // ms

[[nodiscard]] inline bool areThere()
{
    return QGuiApplication::platformName() == QLatin1String("xcb") &&
           !QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("xprop")).isEmpty();
}

/// Runs a program and what it asks of this process meanwhile.
inline QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    QElapsedTimer clock;
    clock.start();
    while (process.state() != QProcess::NotRunning && clock.elapsed() < patience)
        QTest::qWait(5);
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// One line of xdotool commands.
inline void xdo(const QString &commands)
{
    run(QStringLiteral("xdotool"), commands.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QTest::qWait(30);
}

inline void pointerTo(QPoint point)
{
    xdo(QStringLiteral("mousemove %1 %2").arg(point.x()).arg(point.y()));
}

/// Moves the pointer in small steps, as a hand does.
inline void dragTo(QPoint from, QPoint to, int steps = 8)
{
    for (int step = 1; step <= steps; ++step)
        pointerTo(from + (to - from) * step / steps);
}

[[nodiscard]] inline QString windowProperty(WId window, const char *name)
{
    return run(QStringLiteral("xprop"),
               {QStringLiteral("-id"), QString::number(window), QString::fromLatin1(name)});
}

} // namespace x11tools
