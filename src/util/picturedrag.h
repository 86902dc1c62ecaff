#pragma once

#include <QString>

namespace imutil {

/// Drags a picture out of the client: its pixels, a mark that it is a GIF, and `path` itself as the URL, also
/// if it can't be read. The drag shows a thumbnail of at most 100 by 100, made of `thumbPath` if that is
/// given. Returns when the user has let go. Does nothing if `path` is empty.
void dragPicture(const QString &path, const QString &thumbPath);

} // namespace imutil
