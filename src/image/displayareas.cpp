#include "displayareas.h"

#include <QtGlobal>

DisplayAreas fittedAreas(const QSizeF &item, const QSizeF &picture)
{
    const double itemAspect = item.width() / item.height();
    const double pictureAspect = picture.width() / picture.height();
    QRectF shown;
    if (pictureAspect >= itemAspect) {
        const double height = item.width() / pictureAspect;
        shown = QRectF(0, qAbs(height - item.height()) * 0.5, item.width(), height);
    } else {
        const double width = item.height() * pictureAspect;
        shown = QRectF(qAbs(width - item.width()) * 0.5, 0, width, item.height());
    }
    DisplayAreas areas;
    areas.display = QRectF(shown.x() / item.width(), shown.y() / item.height(), shown.width() / item.width(),
                           shown.height() / item.height());
    return areas;
}

DisplayAreas croppedAreas(const QSizeF &item, const QSizeF &picture)
{
    const double itemAspect = item.width() / item.height();
    const double pictureAspect = picture.width() / picture.height();
    QRectF seen;
    if (itemAspect >= pictureAspect) {
        const double height = picture.width() / itemAspect;
        seen = QRectF(0, qAbs(height - picture.height()) * 0.5, picture.width(), height);
    } else {
        const double width = picture.height() * itemAspect;
        seen = QRectF(qAbs(width - picture.width()) * 0.5, 0, width, picture.height());
    }
    DisplayAreas areas;
    areas.source = QRectF(seen.x() / picture.width(), seen.y() / picture.height(),
                          seen.width() / picture.width(), seen.height() / picture.height());
    return areas;
}
