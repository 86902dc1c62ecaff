#!/usr/bin/env python3
"""Draws the demo's own pictures: its icon, and the arrow before the branches of a tree."""

import pathlib
import struct
import zlib

SAMPLES = 4


def png(width, height, color_at):
    """A PNG of the colours (r, g, b, a in 0 to 1) that `color_at(x, y)` has on the unit square, sampled SAMPLES²-fold."""
    rows = bytearray()
    for row in range(height):
        rows.append(0)
        for column in range(width):
            total = [0.0] * 4
            for i in range(SAMPLES * SAMPLES):
                x = (column + (i % SAMPLES + 0.5) / SAMPLES) / width
                y = (row + (i // SAMPLES + 0.5) / SAMPLES) / height
                r, g, b, a = color_at(x, y)
                total = [total[0] + r * a, total[1] + g * a, total[2] + b * a, total[3] + a]
            alpha = total[3]
            color = [channel / alpha if alpha else 0 for channel in total[:3]] + [alpha / SAMPLES**2]
            rows += bytes(round(255 * channel) for channel in color)

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9))
            + chunk(b"IEND", b""))


def rounded(x, y, left, top, right, bottom, radius):
    """Whether the point lies in a rectangle with rounded corners."""
    dx = max(left + radius - x, x - right + radius, 0)
    dy = max(top + radius - y, y - bottom + radius, 0)
    return left <= x <= right and top <= y <= bottom and dx * dx + dy * dy <= radius * radius


def icon(x, y):
    """A white bubble on a blue tile."""
    tail = 0.3 <= x <= 0.5 and 0.6 <= y <= 0.6 + (0.5 - x)
    if rounded(x, y, 0.22, 0.25, 0.78, 0.66, 0.13) or tail:
        dots = any((x - center) ** 2 + (y - 0.455) ** 2 <= 0.045**2 for center in (0.36, 0.5, 0.64))
        return (0.24, 0.43, 0.95, 1) if dots else (1, 1, 1, 1)
    return (0.24 + 0.1 * (1 - y), 0.43 + 0.12 * (1 - y), 0.95, rounded(x, y, 0.03, 0.03, 0.97, 0.97, 0.22))


def arrow(x, y):
    """A triangle that points to the right."""
    return (0.4, 0.45, 0.54, 0.3 <= x <= 0.75 and abs(y - 0.5) <= (0.75 - x) * 0.75)


here = pathlib.Path(__file__).parent
(here / "icon.png").write_bytes(png(64, 64, icon))
(here / "right.png").write_bytes(png(12, 12, arrow))
