#pragma once

#include <QString>

/// An image format whose reading waits at a gate, so that a test can act while a worker is in the middle of
/// it.
///
/// A file of it holds "GATE" and reads as an opaque picture of 8 by 8 pixels in one colour.
namespace gateimage {

/// Pictures read from now on wait; none is inside and nobody has come out.
void close();
/// Lets all pictures through.
void open();
/// Waits until a reader stands at the gate; false after ten seconds without one.
[[nodiscard]] bool waitForReader();
/// Readers that came out since `close()`.
[[nodiscard]] int finishedReaders();

/// Writes a picture of the format to `path`.
[[nodiscard]] bool write(const QString &path);

} // namespace gateimage
