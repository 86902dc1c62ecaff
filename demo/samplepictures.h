#pragma once

#include <QObject>

/// The pictures that the demo shows. It draws them itself, into files of one folder, so that the client gets
/// them as it would get downloads: as paths.
class SamplePictures : public QObject
{
    Q_OBJECT

public:
    /// Draws whatever is not in `folder` yet, all but the map.
    explicit SamplePictures(const QString &folder, QObject *parent = nullptr);

    /// The portrait of the person with that number, 1 to 6; "" for others.
    [[nodiscard]] Q_INVOKABLE QString of(int person) const;
    /// A landscape of 1280 by 800; 0 is the wallpaper. "" above 3.
    [[nodiscard]] Q_INVOKABLE QString landscape(int number) const;
    /// Draws a map of 12,000 by 9,000 on a worker; mapReady() tells where it is.
    Q_INVOKABLE void drawMap();

Q_SIGNALS:
    /// `path` is empty when the map could not be written.
    void mapReady(const QString &path);

private:
    [[nodiscard]] QString file(const QString &name) const;

    QString folder;
};
