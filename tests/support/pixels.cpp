#include "pixels.h"

#include <QCoreApplication>
#include <QDir>
#include <QRect>
#include <QRegularExpression>
#include <QtTest>

namespace pixels {

bool isAlike(QRgb a, QRgb b, int channel)
{
    return qAbs(qRed(a) - qRed(b)) <= channel && qAbs(qGreen(a) - qGreen(b)) <= channel &&
           qAbs(qBlue(a) - qBlue(b)) <= channel;
}

QString saveFailure(const QImage &picture, const QString &what)
{
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/failures"));
    folder.mkpath(QStringLiteral("."));
    QString name = QLatin1String(QTest::currentTestFunction()) + QLatin1Char('-') +
                   QLatin1String(QTest::currentDataTag()) + QLatin1Char('-') + what;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("-"));
    const QString path = folder.filePath(name + QStringLiteral(".png"));
    picture.save(path);
    return path;
}

QString pictureDifference(const QImage &actual, const QImage &expected, Tolerance tolerance)
{
    if (actual.size() != expected.size())
        return QStringLiteral("the picture is %1x%2, expected %3x%4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    if (actual.isNull())
        return QStringLiteral("there is no picture");

    QImage marked = actual.convertToFormat(QImage::Format_RGB32);
    int differing = 0;
    QPoint first;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (isAlike(actual.pixel(x, y), expected.pixel(x, y), tolerance.channel))
                continue;
            if (differing++ == 0)
                first = QPoint(x, y);
            marked.setPixel(x, y, qRgb(255, 0, 0));
        }
    }
    if (differing <= tolerance.share * actual.width() * actual.height())
        return QString();
    saveFailure(expected, QStringLiteral("expected"));
    saveFailure(marked, QStringLiteral("marked"));
    const QString path = saveFailure(actual, QStringLiteral("actual"));
    return QStringLiteral("%1 pixels differ, the first at (%2, %3): is %4, expected %5; see %6")
        .arg(differing)
        .arg(first.x())
        .arg(first.y())
        .arg(QColor(actual.pixel(first)).name(), QColor(expected.pixel(first)).name(), path);
}

int count(const QImage &picture, const QColor &color, int channel)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            found += isAlike(picture.pixel(x, y), color.rgb(), channel) ? 1 : 0;
    }
    return found;
}

QRect inkRect(const QImage &picture, const QColor &background, int channel)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!isAlike(picture.pixel(x, y), background.rgb(), channel))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace pixels
