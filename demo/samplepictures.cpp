#include "samplepictures.h"

#include <QDir>
#include <QFile>
#include <QFutureWatcher>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QtConcurrent>

#include <cmath>

namespace {

constexpr int people = 6;
constexpr int landscapes = 4;
constexpr int portraitSide = 256;
constexpr QSize landscapeSize(1280, 800);
constexpr QSize mapSize(12000, 9000);

struct Portrait
{
    QColor top, bottom, skin, hair, shirt;
};

Portrait portraitOf(int person)
{
    static const Portrait all[people] = {
        {0xffb199, 0xff6f91, 0xf2c9a8, 0x5a3320, 0x3d6df2},
        {0x8ec5fc, 0x5b7cfa, 0xe8b98f, 0x2b2019, 0x2fa98c},
        {0xfbc2eb, 0xa18cd1, 0xf5d3b5, 0x17151c, 0xe4688c},
        {0xfad961, 0xf76b1c, 0xc58c5c, 0x1d140f, 0x26304a},
        {0x96e6a1, 0x3b9f7a, 0xf3cfb3, 0xc98a3b, 0x8d67e8},
        {0xa1c4fd, 0xc2a0ec, 0x9c6a44, 0x120d0a, 0xe58f3c},
    };
    return all[person - 1];
}

QImage drawPortrait(int person)
{
    const Portrait look = portraitOf(person);
    QImage picture(portraitSide, portraitSide, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient wall(0, 0, portraitSide, portraitSide);
    wall.setColorAt(0, look.top);
    wall.setColorAt(1, look.bottom);
    painter.fillRect(picture.rect(), wall);
    painter.setPen(Qt::NoPen);
    // Long hair falls behind the shoulders.
    painter.setBrush(look.hair);
    if (person % 2 == 1)
        painter.drawRoundedRect(QRectF(70, 58, 116, 150), 56, 56);
    painter.setBrush(look.shirt);
    painter.drawEllipse(QRectF(36, 186, 184, 150));
    painter.setBrush(look.skin.darker(112));
    painter.drawRoundedRect(QRectF(108, 150, 40, 52), 18, 18);
    painter.setBrush(look.skin);
    painter.drawEllipse(QRectF(80, 62, 96, 114));
    QPainterPath hair;
    hair.addEllipse(QRectF(74, 46, 108, 96));
    QPainterPath face;
    face.addEllipse(QRectF(78 + (person % 3) * 6, 84, 100, 110));
    painter.setBrush(look.hair);
    painter.drawPath(hair.subtracted(face));
    painter.setBrush(QColor(0x26, 0x1d, 0x1a));
    painter.drawEllipse(QPointF(110, 122), 4.5, 5.5);
    painter.drawEllipse(QPointF(146, 122), 4.5, 5.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(look.skin.darker(165), 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(112, 130, 32, 24), 200 * 16, 140 * 16);
    return picture;
}

/// A ridge across the picture, made of three waves.
QPainterPath ridge(double height, double roughness, double phase)
{
    QPainterPath path(QPointF(0, landscapeSize.height()));
    for (int x = 0; x <= landscapeSize.width(); x += 4) {
        const double at = x / 160.0 + phase;
        const double wave = std::sin(at) + 0.5 * std::sin(2.3 * at + phase) + 0.2 * std::sin(6.1 * at);
        path.lineTo(x, height - roughness * wave);
    }
    path.lineTo(landscapeSize.width(), landscapeSize.height());
    path.closeSubpath();
    return path;
}

QImage drawLandscape(int number)
{
    struct Light
    {
        QColor high, low, sun, near;
    };
    static const Light lights[landscapes] = {
        {0xd6ecf5, 0xf8efe4, 0xffffff, 0x1f8a8c},
        {0x2b4b9b, 0xf4a26b, 0xffe3a8, 0x132340},
        {0x74b9ff, 0xe8f6ff, 0xfff7d6, 0x1f6f4a},
        {0x2c1b4d, 0xd9668b, 0xffd1dc, 0x180f2b},
    };
    const Light &light = lights[number];
    QImage picture(landscapeSize, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, landscapeSize.height() * 0.8);
    sky.setColorAt(0, light.high);
    sky.setColorAt(1, light.low);
    painter.fillRect(picture.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(light.sun);
    painter.drawEllipse(QPointF(860 - 120 * number, 250 + 40 * number), 70, 70);
    constexpr int ridges = 5;
    for (int i = 0; i < ridges; ++i) {
        const double share = (i + 1.0) / ridges;
        painter.setBrush(QColor::fromRgbF(light.low.redF() * (1 - share) + light.near.redF() * share,
                                          light.low.greenF() * (1 - share) + light.near.greenF() * share,
                                          light.low.blueF() * (1 - share) + light.near.blueF() * share));
        painter.drawPath(ridge(380 + 90.0 * i, 50 - 4.0 * i, 1.7 * i + number));
    }
    return picture;
}

/// A map with height lines. One byte for each pixel is enough for it, and so is its memory.
QImage drawMapImage()
{
    QImage map(mapSize, QImage::Format_Indexed8);
    QVector<QRgb> colors(256);
    for (int i = 0; i < colors.size(); ++i) {
        const double height = i / 255.0;
        const bool line = i % 16 == 0;
        const QColor ground = height < 0.35
                                  ? QColor::fromHsvF(0.57, 0.55 - height * 0.6, 0.75 + height * 0.5)
                                  : QColor::fromHsvF(0.33 - 0.25 * height, 0.35, 0.92 - 0.3 * height);
        colors[i] = (line ? ground.darker(125) : ground).rgb();
    }
    map.setColorTable(colors);

    QVector<double> across(mapSize.width());
    QVector<double> slant(mapSize.width() + mapSize.height());
    for (int x = 0; x < across.size(); ++x)
        across[x] = std::sin(x / 700.0) + 0.4 * std::sin(x / 190.0);
    for (int i = 0; i < slant.size(); ++i)
        slant[i] = 0.7 * std::sin(i / 910.0) + 0.15 * std::sin(i / 97.0);
    for (int y = 0; y < mapSize.height(); ++y) {
        uchar *line = map.scanLine(y);
        const double down = std::cos(y / 640.0) + 0.4 * std::cos(y / 210.0);
        for (int x = 0; x < mapSize.width(); ++x)
            line[x] = static_cast<uchar>(qBound(0, int(127.5 + 46 * (across[x] * down + slant[x + y])), 255));
    }
    return map;
}

} // namespace

SamplePictures::SamplePictures(const QString &folder, QObject *parent)
    : QObject(parent)
    , folder(folder)
{
    QDir().mkpath(folder);
    for (int person = 1; person <= people; ++person) {
        if (!QFile::exists(of(person)))
            drawPortrait(person).save(of(person));
    }
    for (int number = 0; number < landscapes; ++number) {
        if (!QFile::exists(landscape(number)))
            drawLandscape(number).save(landscape(number), nullptr, 90);
    }
}

QString SamplePictures::file(const QString &name) const
{
    return QDir(folder).filePath(name);
}

QString SamplePictures::of(int person) const
{
    return person >= 1 && person <= people ? file(QStringLiteral("person-%1.png").arg(person)) : QString();
}

QString SamplePictures::landscape(int number) const
{
    return number >= 0 && number < landscapes ? file(QStringLiteral("landscape-%1.jpg").arg(number))
                                              : QString();
}

void SamplePictures::drawMap()
{
    const QString path = file(QStringLiteral("map.jpg"));
    auto *watcher = new QFutureWatcher<bool>(this);
    connect(watcher, &QFutureWatcher<bool>::finished, this, [this, watcher, path] {
        Q_EMIT mapReady(watcher->result() ? path : QString());
        watcher->deleteLater();
    });
    watcher->setFuture(
        QtConcurrent::run([path] { return QFile::exists(path) || drawMapImage().save(path); }));
}
