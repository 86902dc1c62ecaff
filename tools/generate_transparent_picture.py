#!/usr/bin/env python3
"""Generates the light checker that stands behind transparent parts of a picture, to be tiled.

Usage: generate_transparent_picture.py output.png
"""

import struct
import sys
import zlib

SIDE = 16
SQUARE = SIDE // 2
LIGHT = b"\xff\xff\xff"
DARK = b"\xdc\xdc\xdc"


def chunk(kind, data):
    return struct.pack(">L", len(data)) + kind + data + struct.pack(">L", zlib.crc32(kind + data))


def picture():
    rows = b""
    for y in range(SIDE):
        first, second = (LIGHT, DARK) if y < SQUARE else (DARK, LIGHT)
        rows += b"\0" + first * SQUARE + second * SQUARE  # filter type 0
    header = struct.pack(">2L5B", SIDE, SIDE, 8, 2, 0, 0, 0)  # 8 bits per channel, RGB
    # Stored, not compressed: compressors differ in their output from version to version.
    data = zlib.compress(rows, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", data) + chunk(b"IEND", b"")


def main():
    with open(sys.argv[1], "wb") as out:
        out.write(picture())


if __name__ == "__main__":
    main()
