#pragma once

#include <QtGlobal>

/// Blurs interleaved 8-bit pixels in place, first along the rows, then along the columns, with weights that
/// fall with the square of the distance and reach 0 at `radius`. Pixels beyond the edge repeat the edge.
///
/// `components` is the number of bytes of a pixel, of which the first three are blurred. `radius` is brought
/// into 1 to 248; 1 changes nothing. Without the memory for a copy of the colours the pixels stay as they
/// are.
void quadraticBlur(uchar *bits, int width, int height, int components, int radius);
