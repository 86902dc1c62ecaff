#pragma once

#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVariantMap>

/// Pictures as a chat needs them: thumbnails to send, avatars to crop, other formats. Paths may be file URLs
/// or plain paths unless a function says otherwise. Pictures are saved in the format of the file's suffix.
namespace imutil {

/// Size of the pixel data in bytes, at most that of an `int`.
[[nodiscard]] int byteCount(const QImage &image);

/// Saves the picture that goes into a chat: `srcImage` itself if it is at most 200 wide and less than 800
/// high, otherwise scaled into a box of 200 by its own width. The result has "w" and "h", the size of what
/// was saved, and "size", its pixel data in bytes. Empty if anything fails.
QVariantMap scaleImage(const QString &srcImage, const QString &destImage);

/// Saves `srcImage` scaled into `w` by `h`, keeping its proportions. False if that would enlarge it. A
/// missing source is a success with nothing done: there was nothing that needed reducing.
bool reduceImage(const QString &srcImage, const QString &destImage, int w, int h);

/// The keys "filePath", "size" in bytes and "name" with its suffix; empty texts and 0 for a missing file.
[[nodiscard]] QVariantMap imageInfo(const QString &filePath);

/// The size at which the picture is shown, with the rotation that its file asks for, without decoding it.
/// Both are -1 if it is no picture.
[[nodiscard]] QSizeF imageSize(const QString &imagePath);

/// Whether the content, not the suffix, is that of a known picture format.
[[nodiscard]] bool isImageFormat(const QString &path);

/// Saves the picture as WebP in the temporary folder, under the part of its name before the first ".", and
/// returns the path; "" if that fails, or if the name already ends in "webp". `srcPath` is taken as it stands
/// but for "file:///", which is cut.
QString saveAsTmpWebp(const QString &srcPath);

/// What copyPhoto() does to a picture on the way.
struct PhotoCrop
{
    QRect rect; ///< what to keep, in the coordinates of the unrotated picture at `scaleSize`
    QSize
        scaleSize; ///< size to scale to first, without proportions, if either side is smaller; none if empty
    double rotation = 0;     ///< degrees, clockwise
    bool mirror = false;     ///< left and right swapped as seen after the rotation
    bool turnedOver = false; ///< upside down: both directions swapped
};

/// Saves a part of a picture, as the avatar editor shows it. A part that reaches past the right or the lower
/// edge is not clipped: then the largest square at the top left is saved. False if the picture can't be read
/// or written.
bool copyPhoto(const QString &fileName, const QString &targetName, const PhotoCrop &crop);

/// Decodes a data URL and keeps the picture in `QPixmapCache` under `key`. Does nothing if there is one, or
/// if `data` is not two parts with a comma between, the second of them a picture in base64.
void cacheBase64Image(const QString &key, const QString &data);

} // namespace imutil
