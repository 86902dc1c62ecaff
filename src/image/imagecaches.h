#pragma once

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QString>
#include <QThreadPool>

/// What the workers of the image items share. They live from the module's loading to its unloading.
///
/// A cache is touched only under its mutex, and a mutex is held for lookups, inserts and the shallow copies
/// that they return, never across a decode. The two caches share nothing: `RoundedImage` keeps finished
/// pictures, `ImageRender` backgrounds that are already blurred.
extern QMutex roundedImageCacheMutex;
extern QCache<QString, QImage> roundedImageCache;
extern QMutex renderImageCacheMutex;
extern QCache<QString, QImage> renderImageCache;

/// Loads the pictures of `ImageRender`, so that a wall of them leaves the global pool to the text.
extern QThreadPool renderThreadPool;

/// Most threads of `renderThreadPool`, whatever the machine offers.
constexpr int maximumRenderThreads = 4;

/// Key of both caches. It names the source alone: two requests for one source with other sizes, fill modes or
/// radii meet in one entry, so a picture is in memory once.
[[nodiscard]] QString imageCacheKey(const QString &source);

/// What `image` takes of a cache: the bytes of its pixels at 32 bits.
[[nodiscard]] int imageCacheCost(const QImage &image);
