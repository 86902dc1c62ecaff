#pragma once

#include <QColor>
#include <QImage>
#include <QString>

/// Comparison of pictures. A test says `QCOMPARE(pictureDifference(actual, expected), QString())`.
namespace pixels {

/// How far two pictures may differ and still count as alike.
struct Tolerance
{
    int channel = 8;    ///< greatest difference of a colour channel, 0 to 255, that is no difference
    double share = 0.0; ///< share of pixels, 0 to 1, that may differ by more than that
};

/// Whether no channel of the two colours differs by more than `channel`. Alpha takes no part.
[[nodiscard]] bool isAlike(QRgb a, QRgb b, int channel = 8);

/// Empty when the pictures are alike, else a sentence about the differences. Then both pictures, and one with
/// the differing pixels in red, lie in the folder `failures` beside the test, named after the test function.
[[nodiscard]] QString pictureDifference(const QImage &actual, const QImage &expected,
                                        Tolerance tolerance = {});

/// Saves `picture` among the failures and returns its path, for tests that judge pixels on their own.
QString saveFailure(const QImage &picture, const QString &what);

/// Number of pixels of `picture` that are like `color`.
[[nodiscard]] int count(const QImage &picture, const QColor &color, int channel = 8);

/// The smallest rectangle that holds every pixel of `picture` unlike `background`; null when there is none.
[[nodiscard]] QRect inkRect(const QImage &picture, const QColor &background, int channel = 8);

} // namespace pixels
